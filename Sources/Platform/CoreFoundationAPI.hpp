#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// The CoreFoundation functions and constants the system uses. The constants are symbols of the
/// framework, so they are carried here too (structures by address), letting a simulated window
/// server supply its own. Ownership: `Create` and `Copy` return +1 values released with CFRelease.
struct CoreFoundationAPI {
    CFTypeID (*CFGetTypeID)(CFTypeRef cf);
    CFTypeRef (*CFRetain)(CFTypeRef cf);
    void (*CFRelease)(CFTypeRef cf);

    CFTypeID (*CFArrayGetTypeID)(void);
    CFArrayRef (*CFArrayCreate)(CFAllocatorRef allocator, const void** values, CFIndex numValues,
                                const CFArrayCallBacks* callBacks);
    CFIndex (*CFArrayGetCount)(CFArrayRef theArray);
    const void* (*CFArrayGetValueAtIndex)(CFArrayRef theArray, CFIndex idx);

    CFDictionaryRef (*CFDictionaryCreate)(CFAllocatorRef allocator, const void** keys, const void** values,
                                          CFIndex numValues, const CFDictionaryKeyCallBacks* keyCallBacks,
                                          const CFDictionaryValueCallBacks* valueCallBacks);

    // Upper-case hexadecimal in 8-4-4-4-12 groups.
    CFStringRef (*CFUUIDCreateString)(CFAllocatorRef alloc, CFUUIDRef uuid);

    CFStringRef (*CFStringCreateWithBytes)(CFAllocatorRef alloc, const UInt8* bytes, CFIndex numBytes,
                                           CFStringEncoding encoding, Boolean isExternalRepresentation);
    CFStringRef (*CFStringCreateWithCString)(CFAllocatorRef alloc, const char* cStr,
                                             CFStringEncoding encoding);
    Boolean (*CFStringGetCString)(CFStringRef theString, char* buffer, CFIndex bufferSize,
                                  CFStringEncoding encoding);
    CFIndex (*CFStringGetLength)(CFStringRef theString);  // UTF-16 code units
    // Bytes that `length` UTF-16 code units may need in `encoding`, without the terminating NUL.
    CFIndex (*CFStringGetMaximumSizeForEncoding)(CFIndex length, CFStringEncoding encoding);
    // May answer NULL at any time; CFStringGetCString is the fallback.
    const char* (*CFStringGetCStringPtr)(CFStringRef theString, CFStringEncoding encoding);

    CFAllocatorRef kCFAllocatorDefault;
    CFBooleanRef kCFBooleanTrue;
    const CFArrayCallBacks* kCFTypeArrayCallBacks;
    const CFDictionaryKeyCallBacks* kCFTypeDictionaryKeyCallBacks;
    const CFDictionaryValueCallBacks* kCFTypeDictionaryValueCallBacks;
};

}  // namespace screenweaver::platform
