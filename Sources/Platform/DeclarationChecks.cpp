// Compile-time proof that every table entry has exactly the type of the function or constant it
// stands for: on macOS against the SDK's own declarations, elsewhere against our transcription.
// Only declared types are inspected (no address is taken), so nothing here needs the symbols.

#include <stddef.h>

#include <type_traits>

#include "Platform/PlatformAPI.hpp"

namespace screenweaver::platform {
namespace {

// clang turns the nothrow attribute of some system functions into a noexcept function type; the
// tables hold plain function pointers, to which those convert.
template <class Function>
struct WithoutNoexcept {
    using type = Function;
};
template <class Result, class... Parameters>
struct WithoutNoexcept<Result(Parameters...) noexcept> {
    using type = Result(Parameters...);
};

template <class Entry, class Declared>
constexpr bool entryMatches =
    std::is_same_v<std::remove_pointer_t<Entry>, typename WithoutNoexcept<Declared>::type>;

#define SCREENWEAVER_CHECK_FUNCTION(Table, name)                         \
    static_assert(entryMatches<decltype(Table::name), decltype(::name)>, \
                  #Table "::" #name " does not have the type of the system's " #name)

// A constant carried by value: the entry is the constant's type without its const.
#define SCREENWEAVER_CHECK_VALUE(Table, name)                                                   \
    static_assert(std::is_same_v<decltype(Table::name), std::remove_const_t<decltype(::name)>>, \
                  #Table "::" #name " does not have the type of the system's " #name)

// A constant structure carried by address.
#define SCREENWEAVER_CHECK_ADDRESS(Table, name)                                                \
    static_assert(std::is_same_v<decltype(Table::name), std::add_pointer_t<decltype(::name)>>, \
                  #Table "::" #name " does not point to the type of the system's " #name)

SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGGetActiveDisplayList);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayVendorNumber);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModelNumber);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplaySerialNumber);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayIsBuiltin);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayIsMain);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayIsAsleep);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayBounds);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayMirrorsDisplay);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayPixelsWide);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayPixelsHigh);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayCopyDisplayMode);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayCopyAllDisplayModes);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetPixelWidth);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetPixelHeight);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetWidth);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetHeight);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetRefreshRate);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeGetTypeID);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeRetain);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayModeRelease);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplaySetDisplayMode);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGBeginDisplayConfiguration);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGConfigureDisplayMirrorOfDisplay);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGConfigureDisplayWithDisplayMode);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGConfigureDisplayOrigin);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGCompleteDisplayConfiguration);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGCancelDisplayConfiguration);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayRegisterReconfigurationCallback);
SCREENWEAVER_CHECK_FUNCTION(CoreGraphicsAPI, CGDisplayRemoveReconfigurationCallback);
SCREENWEAVER_CHECK_VALUE(CoreGraphicsAPI, kCGDisplayShowDuplicateLowResolutionModes);

SCREENWEAVER_CHECK_FUNCTION(ColorSyncAPI, CGDisplayCreateUUIDFromDisplayID);

SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFGetTypeID);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFRetain);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFRelease);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFArrayGetTypeID);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFArrayCreate);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFArrayGetCount);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFArrayGetValueAtIndex);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFDictionaryCreate);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFUUIDCreateString);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringCreateWithBytes);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringCreateWithCString);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringGetCString);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringGetLength);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringGetMaximumSizeForEncoding);
SCREENWEAVER_CHECK_FUNCTION(CoreFoundationAPI, CFStringGetCStringPtr);
SCREENWEAVER_CHECK_VALUE(CoreFoundationAPI, kCFAllocatorDefault);
SCREENWEAVER_CHECK_VALUE(CoreFoundationAPI, kCFBooleanTrue);
SCREENWEAVER_CHECK_ADDRESS(CoreFoundationAPI, kCFTypeArrayCallBacks);
SCREENWEAVER_CHECK_ADDRESS(CoreFoundationAPI, kCFTypeDictionaryKeyCallBacks);
SCREENWEAVER_CHECK_ADDRESS(CoreFoundationAPI, kCFTypeDictionaryValueCallBacks);

SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, objc_lookUpClass);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, objc_getClass);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, sel_registerName);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, sel_getName);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, class_respondsToSelector);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, class_getMethodImplementation);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, object_getClass);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, class_getName);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, objc_autoreleasePoolPush);
SCREENWEAVER_CHECK_FUNCTION(ObjCRuntimeAPI, objc_autoreleasePoolPop);

SCREENWEAVER_CHECK_FUNCTION(DispatchAPI, dispatch_get_global_queue);

// The per-architecture traps: BOOL and boolean_t are not the same type on arm64 and x86_64.
#if defined(__x86_64__) || defined(__i386__)
static_assert(std::is_same_v<boolean_t, unsigned int>);
static_assert(std::is_same_v<BOOL, signed char>);
#else
static_assert(std::is_same_v<boolean_t, int>);
static_assert(std::is_same_v<BOOL, bool>);
#endif
static_assert(std::is_same_v<Boolean, unsigned char>);
static_assert(std::is_same_v<CFIndex, long>);
static_assert(std::is_same_v<CFTypeID, unsigned long>);
static_assert(std::is_same_v<CFTypeRef, const void*>);
static_assert(std::is_same_v<CGFloat, double>);
static_assert(std::is_same_v<CGDirectDisplayID, uint32_t>);
static_assert(std::is_same_v<CGConfigureOption, uint32_t>);
static_assert(std::is_same_v<CGDisplayChangeSummaryFlags, uint32_t>);
static_assert(std::is_same_v<CGDisplayReconfigurationCallBack, void (*)(uint32_t, uint32_t, void*)>);
static_assert(std::is_same_v<IMP, void (*)(void)>);

// CF_ENUM types are real enums in C++, so an integer is not a CGError without a cast.
static_assert(std::is_enum_v<CGError>);
static_assert(std::is_same_v<std::underlying_type_t<CGError>, int32_t>);
static_assert(std::is_enum_v<CFStringBuiltInEncodings>);
static_assert(std::is_same_v<std::underlying_type_t<CFStringBuiltInEncodings>, unsigned int>);
static_assert(std::is_enum_v<qos_class_t>);
static_assert(std::is_same_v<std::underlying_type_t<qos_class_t>, unsigned int>);
static_assert(std::is_same_v<std::underlying_type_t<decltype(kCGConfigurePermanently)>, uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<decltype(kCGDisplayAddFlag)>, uint32_t>);

static_assert(kCGErrorSuccess == 0 && kCGErrorFailure == 1000 && kCGErrorIllegalArgument == 1001);
static_assert(kCGErrorCannotComplete == 1004 && kCGErrorNoneAvailable == 1011);
static_assert(kCGConfigureForAppOnly == 0 && kCGConfigureForSession == 1 && kCGConfigurePermanently == 2);
static_assert(kCGDisplayBeginConfigurationFlag == 0x1 && kCGDisplayMovedFlag == 0x2 &&
              kCGDisplaySetMainFlag == 0x4);
static_assert(kCGDisplaySetModeFlag == 0x8 && kCGDisplayAddFlag == 0x10 && kCGDisplayRemoveFlag == 0x20);
static_assert(kCGDisplayMirrorFlag == 0x400 && kCGDisplayUnMirrorFlag == 0x800);
static_assert(kCGDisplayDesktopShapeChangedFlag == 0x1000);
static_assert(kCFStringEncodingUTF8 == 0x08000100 && kCFStringEncodingASCII == 0x0600);
static_assert(QOS_CLASS_USER_INITIATED == 0x19);

// Layouts (LP64): CGPoint, CGSize and CGRect travel by value through messages and functions.
static_assert(sizeof(CGPoint) == 16 && offsetof(CGPoint, x) == 0 && offsetof(CGPoint, y) == 8);
static_assert(sizeof(CGSize) == 16 && offsetof(CGSize, width) == 0 && offsetof(CGSize, height) == 8);
static_assert(sizeof(CGRect) == 32 && offsetof(CGRect, origin) == 0 && offsetof(CGRect, size) == 16);
static_assert(sizeof(CFArrayCallBacks) == 40 && offsetof(CFArrayCallBacks, retain) == 8);
static_assert(sizeof(CFDictionaryKeyCallBacks) == 48 && offsetof(CFDictionaryKeyCallBacks, hash) == 40);
static_assert(sizeof(CFDictionaryValueCallBacks) == 40);

// The C++ view of dispatch types: a global queue is a queue, which is an object.
static_assert(std::is_convertible_v<dispatch_queue_global_t, dispatch_queue_t>);
static_assert(std::is_convertible_v<dispatch_queue_t, dispatch_object_t>);
static_assert(!std::is_convertible_v<dispatch_queue_t, dispatch_queue_global_t>);

}  // namespace
}  // namespace screenweaver::platform
