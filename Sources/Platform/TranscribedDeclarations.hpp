#pragma once
// Stands in for the SDK headers, so it is treated as a system header like them.
#pragma GCC system_header

// Our transcription of the Apple SDK declarations the system uses, for systems without the SDK.
// Every name, type and parameter list is the SDK's own (checked against the macOS SDK headers for
// arm64 and x86_64); nullability qualifiers are left out because they are not part of the type.
// Nothing here is defined on such systems: the functions and constants are only declared, and no
// code outside the Apple-only files may refer to them. The simulated window server supplies its
// own functions through the tables instead.

#include <stddef.h>
#include <stdint.h>

#if defined(__x86_64__) || defined(__i386__)
#define SCREENWEAVER_TRANSCRIPTION_X86 1
#else
#define SCREENWEAVER_TRANSCRIPTION_X86 0
#endif

extern "C" {

// ---------------------------------------------------------------- mach / MacTypes
#if SCREENWEAVER_TRANSCRIPTION_X86
typedef unsigned int boolean_t;  // <mach/i386/boolean.h>, x86_64 user space
#else
typedef int boolean_t;  // <mach/arm/boolean.h>, arm64
#endif
typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef unsigned int UInt32;

// ---------------------------------------------------------------- CoreFoundation
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef signed long CFIndex;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFUUID* CFUUIDRef;
typedef UInt32 CFStringEncoding;

// CF_ENUM is a named enum with a fixed underlying type in C++.
enum CFStringBuiltInEncodings : CFStringEncoding {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100,
};
typedef enum CFStringBuiltInEncodings CFStringBuiltInEncodings;

typedef const void* (*CFArrayRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFArrayReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFArrayCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFArrayEqualCallBack)(const void* value1, const void* value2);
typedef struct {
    CFIndex version;
    CFArrayRetainCallBack retain;
    CFArrayReleaseCallBack release;
    CFArrayCopyDescriptionCallBack copyDescription;
    CFArrayEqualCallBack equal;
} CFArrayCallBacks;

typedef const void* (*CFDictionaryRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFDictionaryReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFDictionaryCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFDictionaryEqualCallBack)(const void* value1, const void* value2);
typedef CFHashCode (*CFDictionaryHashCallBack)(const void* value);
typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
    CFDictionaryHashCallBack hash;
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
} CFDictionaryValueCallBacks;

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
extern const CFBooleanRef kCFBooleanTrue;

CFTypeID CFGetTypeID(CFTypeRef cf);
CFTypeRef CFRetain(CFTypeRef cf);
void CFRelease(CFTypeRef cf);
CFTypeID CFArrayGetTypeID(void);
CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex numValues,
                         const CFArrayCallBacks* callBacks);
CFIndex CFArrayGetCount(CFArrayRef theArray);
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex numValues, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);
CFStringRef CFUUIDCreateString(CFAllocatorRef alloc, CFUUIDRef uuid);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef alloc, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);
CFIndex CFStringGetLength(CFStringRef theString);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
const char* CFStringGetCStringPtr(CFStringRef theString, CFStringEncoding encoding);

// ---------------------------------------------------------------- CoreGraphics geometry
typedef double CGFloat;  // LP64
struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGPoint CGPoint;
typedef struct CGSize CGSize;
typedef struct CGRect CGRect;

// ---------------------------------------------------------------- CoreGraphics errors and displays
enum CGError : int32_t {  // CF_ENUM: a named enum with a fixed underlying type in C++
    kCGErrorSuccess = 0,
    kCGErrorFailure = 1000,
    kCGErrorIllegalArgument = 1001,
    kCGErrorInvalidConnection = 1002,
    kCGErrorInvalidContext = 1003,
    kCGErrorCannotComplete = 1004,
    kCGErrorNotImplemented = 1006,
    kCGErrorRangeCheck = 1007,
    kCGErrorTypeCheck = 1008,
    kCGErrorInvalidOperation = 1010,
    kCGErrorNoneAvailable = 1011,
};
typedef enum CGError CGError;

typedef uint32_t CGDirectDisplayID;
typedef struct CGDisplayMode* CGDisplayModeRef;
typedef struct _CGDisplayConfigRef* CGDisplayConfigRef;
#define kCGNullDirectDisplay ((CGDirectDisplayID)0)

typedef uint32_t CGConfigureOption;  // CF_OPTIONS: a plain typedef plus an anonymous enum in C++
enum : CGConfigureOption {
    kCGConfigureForAppOnly = 0,
    kCGConfigureForSession = 1,
    kCGConfigurePermanently = 2,
};

typedef uint32_t CGDisplayChangeSummaryFlags;  // CF_OPTIONS
enum : CGDisplayChangeSummaryFlags {
    kCGDisplayBeginConfigurationFlag = (1 << 0),
    kCGDisplayMovedFlag = (1 << 1),
    kCGDisplaySetMainFlag = (1 << 2),
    kCGDisplaySetModeFlag = (1 << 3),
    kCGDisplayAddFlag = (1 << 4),
    kCGDisplayRemoveFlag = (1 << 5),
    kCGDisplayEnabledFlag = (1 << 8),
    kCGDisplayDisabledFlag = (1 << 9),
    kCGDisplayMirrorFlag = (1 << 10),
    kCGDisplayUnMirrorFlag = (1 << 11),
    kCGDisplayDesktopShapeChangedFlag = (1 << 12),
};

typedef void (*CGDisplayReconfigurationCallBack)(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags,
                                                 void* userInfo);

extern const CFStringRef kCGDisplayShowDuplicateLowResolutionModes;

CGError CGGetActiveDisplayList(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                               uint32_t* displayCount);
uint32_t CGDisplayVendorNumber(CGDirectDisplayID display);
uint32_t CGDisplayModelNumber(CGDirectDisplayID display);
uint32_t CGDisplaySerialNumber(CGDirectDisplayID display);
boolean_t CGDisplayIsBuiltin(CGDirectDisplayID display);
boolean_t CGDisplayIsMain(CGDirectDisplayID display);
boolean_t CGDisplayIsAsleep(CGDirectDisplayID display);
CGRect CGDisplayBounds(CGDirectDisplayID display);
CGDirectDisplayID CGDisplayMirrorsDisplay(CGDirectDisplayID display);
size_t CGDisplayPixelsWide(CGDirectDisplayID display);
size_t CGDisplayPixelsHigh(CGDirectDisplayID display);
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display);
CFArrayRef CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef options);
size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef mode);
size_t CGDisplayModeGetPixelHeight(CGDisplayModeRef mode);
size_t CGDisplayModeGetWidth(CGDisplayModeRef mode);
size_t CGDisplayModeGetHeight(CGDisplayModeRef mode);
double CGDisplayModeGetRefreshRate(CGDisplayModeRef mode);
CFTypeID CGDisplayModeGetTypeID(void);
void CGDisplayModeRelease(CGDisplayModeRef mode);
CGDisplayModeRef CGDisplayModeRetain(CGDisplayModeRef mode);
CGError CGDisplaySetDisplayMode(CGDirectDisplayID display, CGDisplayModeRef mode, CFDictionaryRef options);
CGError CGBeginDisplayConfiguration(CGDisplayConfigRef* config);
CGError CGConfigureDisplayMirrorOfDisplay(CGDisplayConfigRef config, CGDirectDisplayID display,
                                          CGDirectDisplayID master);
CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef config, CGDirectDisplayID display,
                                          CGDisplayModeRef mode, CFDictionaryRef options);
CGError CGConfigureDisplayOrigin(CGDisplayConfigRef config, CGDirectDisplayID display, int32_t x, int32_t y);
CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef config, CGConfigureOption option);
CGError CGCancelDisplayConfiguration(CGDisplayConfigRef config);
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* userInfo);
CGError CGDisplayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* userInfo);

// ---------------------------------------------------------------- ColorSync (ColorSyncDevice.h)
CFUUIDRef CGDisplayCreateUUIDFromDisplayID(uint32_t displayID);

// ---------------------------------------------------------------- Objective-C runtime
typedef struct objc_class* Class;
struct objc_object {
    Class isa;
};
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
typedef void (*IMP)(void);  // messages are sent through an IMP cast to the method's exact type
#if SCREENWEAVER_TRANSCRIPTION_X86
typedef signed char BOOL;  // x86_64 macOS: clang predefines __OBJC_BOOL_IS_BOOL=0
#else
typedef bool BOOL;      // arm64 macOS: clang predefines __OBJC_BOOL_IS_BOOL=1
#endif

Class objc_lookUpClass(const char* name);
Class objc_getClass(const char* name);
SEL sel_registerName(const char* str);
const char* sel_getName(SEL sel);
BOOL class_respondsToSelector(Class cls, SEL sel);
IMP class_getMethodImplementation(Class cls, SEL name);
Class object_getClass(id obj);
const char* class_getName(Class cls);
// Not in any public SDK header; the ABI is the one clang's ARC runtime support documents.
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);

// ---------------------------------------------------------------- libdispatch (C++ flavour of
// <dispatch/object.h>)
typedef struct dispatch_object_s {
private:
    dispatch_object_s();
    ~dispatch_object_s();
    dispatch_object_s(const dispatch_object_s&);
    void operator=(const dispatch_object_s&);
} * dispatch_object_t;
typedef struct dispatch_queue_s : public dispatch_object_s{} * dispatch_queue_t;
typedef struct dispatch_queue_global_s : public dispatch_queue_s{} * dispatch_queue_global_t;
__attribute__((__nothrow__)) dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier,
                                                                               uintptr_t flags);

// ---------------------------------------------------------------- QoS (<sys/qos.h>)
typedef enum : unsigned int {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
    QOS_CLASS_USER_INITIATED = 0x19,
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_UTILITY = 0x11,
    QOS_CLASS_BACKGROUND = 0x09,
    QOS_CLASS_UNSPECIFIED = 0x00,
} qos_class_t;

}  // extern "C"
