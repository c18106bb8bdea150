// The system's own functions, for macOS only (selected by CMake on Apple platforms).

#include <string.h>
#include <unistd.h>

#include <string_view>
#include <sys/sysctl.h>

#include "Platform/PlatformAPI.hpp"

namespace screenweaver::platform {

namespace {

const CoreGraphicsAPI& systemCoreGraphics() {
    static const CoreGraphicsAPI table{
        .CGGetActiveDisplayList = &::CGGetActiveDisplayList,
        .CGDisplayVendorNumber = &::CGDisplayVendorNumber,
        .CGDisplayModelNumber = &::CGDisplayModelNumber,
        .CGDisplaySerialNumber = &::CGDisplaySerialNumber,
        .CGDisplayIsBuiltin = &::CGDisplayIsBuiltin,
        .CGDisplayIsMain = &::CGDisplayIsMain,
        .CGDisplayIsAsleep = &::CGDisplayIsAsleep,
        .CGDisplayBounds = &::CGDisplayBounds,
        .CGDisplayMirrorsDisplay = &::CGDisplayMirrorsDisplay,
        .CGDisplayPixelsWide = &::CGDisplayPixelsWide,
        .CGDisplayPixelsHigh = &::CGDisplayPixelsHigh,
        .CGDisplayCopyDisplayMode = &::CGDisplayCopyDisplayMode,
        .CGDisplayCopyAllDisplayModes = &::CGDisplayCopyAllDisplayModes,
        .CGDisplayModeGetPixelWidth = &::CGDisplayModeGetPixelWidth,
        .CGDisplayModeGetPixelHeight = &::CGDisplayModeGetPixelHeight,
        .CGDisplayModeGetWidth = &::CGDisplayModeGetWidth,
        .CGDisplayModeGetHeight = &::CGDisplayModeGetHeight,
        .CGDisplayModeGetRefreshRate = &::CGDisplayModeGetRefreshRate,
        .CGDisplayModeGetTypeID = &::CGDisplayModeGetTypeID,
        .CGDisplayModeRetain = &::CGDisplayModeRetain,
        .CGDisplayModeRelease = &::CGDisplayModeRelease,
        .CGDisplaySetDisplayMode = &::CGDisplaySetDisplayMode,
        .CGBeginDisplayConfiguration = &::CGBeginDisplayConfiguration,
        .CGConfigureDisplayMirrorOfDisplay = &::CGConfigureDisplayMirrorOfDisplay,
        .CGConfigureDisplayWithDisplayMode = &::CGConfigureDisplayWithDisplayMode,
        .CGConfigureDisplayOrigin = &::CGConfigureDisplayOrigin,
        .CGCompleteDisplayConfiguration = &::CGCompleteDisplayConfiguration,
        .CGCancelDisplayConfiguration = &::CGCancelDisplayConfiguration,
        .CGDisplayRegisterReconfigurationCallback = &::CGDisplayRegisterReconfigurationCallback,
        .CGDisplayRemoveReconfigurationCallback = &::CGDisplayRemoveReconfigurationCallback,
        .kCGDisplayShowDuplicateLowResolutionModes = ::kCGDisplayShowDuplicateLowResolutionModes,
    };
    return table;
}

const ColorSyncAPI& systemColorSync() {
    static const ColorSyncAPI table{.CGDisplayCreateUUIDFromDisplayID = &::CGDisplayCreateUUIDFromDisplayID};
    return table;
}

const CoreFoundationAPI& systemCoreFoundation() {
    static const CoreFoundationAPI table{
        .CFGetTypeID = &::CFGetTypeID,
        .CFRetain = &::CFRetain,
        .CFRelease = &::CFRelease,
        .CFArrayGetTypeID = &::CFArrayGetTypeID,
        .CFArrayCreate = &::CFArrayCreate,
        .CFArrayGetCount = &::CFArrayGetCount,
        .CFArrayGetValueAtIndex = &::CFArrayGetValueAtIndex,
        .CFDictionaryCreate = &::CFDictionaryCreate,
        .CFUUIDCreateString = &::CFUUIDCreateString,
        .CFStringCreateWithBytes = &::CFStringCreateWithBytes,
        .CFStringCreateWithCString = &::CFStringCreateWithCString,
        .CFStringGetCString = &::CFStringGetCString,
        .CFStringGetLength = &::CFStringGetLength,
        .CFStringGetMaximumSizeForEncoding = &::CFStringGetMaximumSizeForEncoding,
        .CFStringGetCStringPtr = &::CFStringGetCStringPtr,
        .kCFAllocatorDefault = ::kCFAllocatorDefault,
        .kCFBooleanTrue = ::kCFBooleanTrue,
        .kCFTypeArrayCallBacks = &::kCFTypeArrayCallBacks,
        .kCFTypeDictionaryKeyCallBacks = &::kCFTypeDictionaryKeyCallBacks,
        .kCFTypeDictionaryValueCallBacks = &::kCFTypeDictionaryValueCallBacks,
    };
    return table;
}

const ObjCRuntimeAPI& systemObjCRuntime() {
    static const ObjCRuntimeAPI table{
        .objc_lookUpClass = &::objc_lookUpClass,
        .objc_getClass = &::objc_getClass,
        .sel_registerName = &::sel_registerName,
        .sel_getName = &::sel_getName,
        .class_respondsToSelector = &::class_respondsToSelector,
        .class_getMethodImplementation = &::class_getMethodImplementation,
        .object_getClass = &::object_getClass,
        .class_getName = &::class_getName,
        .objc_autoreleasePoolPush = &::objc_autoreleasePoolPush,
        .objc_autoreleasePoolPop = &::objc_autoreleasePoolPop,
    };
    return table;
}

const DispatchAPI& systemDispatch() {
    static const DispatchAPI table{.dispatch_get_global_queue = &::dispatch_get_global_queue};
    return table;
}

std::optional<int> runningMacOSMajorVersion() {
    // The kernel keeps the product version in a 48-byte buffer.
    char version[48] = {};
    size_t length = sizeof version;
    if (sysctlbyname("kern.osproductversion", version, &length, nullptr, 0) != 0) {
        return std::nullopt;
    }
    return macOSMajorVersion(std::string_view{version, strnlen(version, sizeof version)});
}

}  // namespace

PlatformAPI PlatformAPI::system() {
    static const std::optional<int> majorVersion = runningMacOSMajorVersion();
    return PlatformAPI{
        .coreGraphics = &systemCoreGraphics(),
        .colorSync = &systemColorSync(),
        .coreFoundation = &systemCoreFoundation(),
        .objcRuntime = &systemObjCRuntime(),
        .dispatch = &systemDispatch(),
        .process = ProcessFacts{.macOSMajorVersion = majorVersion, .realUserID = getuid()},
    };
}

}  // namespace screenweaver::platform
