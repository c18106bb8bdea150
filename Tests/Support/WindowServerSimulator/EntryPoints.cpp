// The C functions of the simulator's tables. They cannot capture state, so each reaches the one
// live simulator through SimulatorState::active().

#include "WindowServerSimulator/SimulatorState.hpp"

namespace screenweaver::simulation {

namespace {

SimulatorState& simulator() {
    return SimulatorState::active();
}

// CoreGraphics
CGError getActiveDisplayList(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                             uint32_t* displayCount) {
    return simulator().getActiveDisplayList(maxDisplays, activeDisplays, displayCount);
}
uint32_t displayVendorNumber(CGDirectDisplayID display) {
    return simulator().vendorNumber(display);
}
uint32_t displayModelNumber(CGDirectDisplayID display) {
    return simulator().modelNumber(display);
}
uint32_t displaySerialNumber(CGDirectDisplayID display) {
    return simulator().serialNumber(display);
}
boolean_t displayIsBuiltin(CGDirectDisplayID display) {
    return simulator().isBuiltin(display);
}
boolean_t displayIsMain(CGDirectDisplayID display) {
    return simulator().isMain(display);
}
boolean_t displayIsAsleep(CGDirectDisplayID display) {
    return simulator().isAsleep(display);
}
CGRect displayBounds(CGDirectDisplayID display) {
    return simulator().bounds(display);
}
CGDirectDisplayID displayMirrorsDisplay(CGDirectDisplayID display) {
    return simulator().mirrorsDisplay(display);
}
size_t displayPixelsWide(CGDirectDisplayID display) {
    return simulator().pixelsWide(display);
}
size_t displayPixelsHigh(CGDirectDisplayID display) {
    return simulator().pixelsHigh(display);
}
CGDisplayModeRef displayCopyDisplayMode(CGDirectDisplayID display) {
    return simulator().copyDisplayMode(display);
}
CFArrayRef displayCopyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef options) {
    return simulator().copyAllDisplayModes(display, options);
}
size_t displayModeGetPixelWidth(CGDisplayModeRef mode) {
    return simulator().modePixelWidth(mode);
}
size_t displayModeGetPixelHeight(CGDisplayModeRef mode) {
    return simulator().modePixelHeight(mode);
}
size_t displayModeGetWidth(CGDisplayModeRef mode) {
    return simulator().modeWidth(mode);
}
size_t displayModeGetHeight(CGDisplayModeRef mode) {
    return simulator().modeHeight(mode);
}
double displayModeGetRefreshRate(CGDisplayModeRef mode) {
    return simulator().modeRefreshRate(mode);
}
CFTypeID displayModeGetTypeID() {
    return simulator().modeTypeID();
}
CGDisplayModeRef displayModeRetain(CGDisplayModeRef mode) {
    return simulator().modeRetain(mode);
}
void displayModeRelease(CGDisplayModeRef mode) {
    simulator().modeRelease(mode);
}
CGError displaySetDisplayMode(CGDirectDisplayID display, CGDisplayModeRef mode, CFDictionaryRef options) {
    return simulator().setDisplayMode(display, mode, options);
}
CGError beginDisplayConfiguration(CGDisplayConfigRef* config) {
    return simulator().beginConfiguration(config);
}
CGError configureDisplayMirrorOfDisplay(CGDisplayConfigRef config, CGDirectDisplayID display,
                                        CGDirectDisplayID master) {
    return simulator().configureMirror(config, display, master);
}
CGError configureDisplayWithDisplayMode(CGDisplayConfigRef config, CGDirectDisplayID display,
                                        CGDisplayModeRef mode, CFDictionaryRef options) {
    return simulator().configureMode(config, display, mode, options);
}
CGError configureDisplayOrigin(CGDisplayConfigRef config, CGDirectDisplayID display, int32_t x, int32_t y) {
    return simulator().configureOrigin(config, display, x, y);
}
CGError completeDisplayConfiguration(CGDisplayConfigRef config, CGConfigureOption option) {
    return simulator().completeConfiguration(config, option);
}
CGError cancelDisplayConfiguration(CGDisplayConfigRef config) {
    return simulator().cancelConfiguration(config);
}
CGError displayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* userInfo) {
    return simulator().registerCallback(callback, userInfo);
}
CGError displayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* userInfo) {
    return simulator().removeCallback(callback, userInfo);
}

// ColorSync
CFUUIDRef displayCreateUUIDFromDisplayID(uint32_t displayID) {
    return simulator().createUUID(displayID);
}

// CoreFoundation
CFTypeID getTypeID(CFTypeRef value) {
    return simulator().getTypeID(value);
}
CFTypeRef retain(CFTypeRef value) {
    return simulator().retain(value);
}
void release(CFTypeRef value) {
    simulator().release(value);
}
CFTypeID arrayGetTypeID() {
    return simulator().arrayTypeID();
}
CFArrayRef arrayCreate(CFAllocatorRef, const void** values, CFIndex numValues,
                       const CFArrayCallBacks* callBacks) {
    return simulator().arrayCreate(values, numValues, callBacks);
}
CFIndex arrayGetCount(CFArrayRef array) {
    return simulator().arrayCount(array);
}
const void* arrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return simulator().arrayValue(array, index);
}
CFDictionaryRef dictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex numValues,
                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                 const CFDictionaryValueCallBacks* valueCallBacks) {
    return simulator().dictionaryCreate(keys, values, numValues, keyCallBacks, valueCallBacks);
}
CFStringRef uuidCreateString(CFAllocatorRef, CFUUIDRef uuid) {
    return simulator().uuidCreateString(uuid);
}
CFStringRef stringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex numBytes,
                                  CFStringEncoding encoding, Boolean) {
    return simulator().stringCreateWithBytes(bytes, numBytes, encoding);
}
CFStringRef stringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
    return simulator().stringCreateWithCString(text, encoding);
}
Boolean stringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding) {
    return simulator().stringGetCString(string, buffer, bufferSize, encoding);
}
CFIndex stringGetLength(CFStringRef string) {
    return simulator().stringLength(string);
}
CFIndex stringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
    return simulator().stringMaximumSize(length, encoding);
}
const char* stringGetCStringPtr(CFStringRef string, CFStringEncoding encoding) {
    return simulator().stringCStringPointer(string, encoding);
}
const void* containerRetain(CFAllocatorRef, const void* value) {
    return simulator().retain(value);
}
void containerRelease(CFAllocatorRef, const void* value) {
    simulator().release(value);
}

// Objective-C runtime
Class lookUpClass(const char* name) {
    return simulator().lookUpClass(name, "objc_lookUpClass");
}
Class getClass(const char* name) {
    return simulator().lookUpClass(name, "objc_getClass");
}
SEL registerName(const char* name) {
    return simulator().registerSelector(name);
}
const char* selectorName(SEL selector) {
    return simulator().selectorName(selector);
}
BOOL classRespondsToSelector(Class cls, SEL selector) {
    return simulator().classRespondsToSelector(cls, selector);
}
IMP classGetMethodImplementation(Class cls, SEL selector) {
    return simulator().methodImplementation(cls, selector);
}
Class objectGetClass(id object) {
    return simulator().objectClass(object);
}
const char* classGetName(Class cls) {
    return simulator().className(cls);
}
void* autoreleasePoolPush() {
    return simulator().poolPush();
}
void autoreleasePoolPop(void* pool) {
    simulator().poolPop(pool);
}

// Dispatch
dispatch_queue_global_t getGlobalQueue(intptr_t identifier, uintptr_t flags) {
    return simulator().globalQueue(identifier, flags);
}

}  // namespace

const CFArrayCallBacks kSimulatedArrayCallBacks{0, &containerRetain, &containerRelease, nullptr, nullptr};
const CFDictionaryKeyCallBacks kSimulatedDictionaryKeyCallBacks{0,       &containerRetain, &containerRelease,
                                                                nullptr, nullptr,          nullptr};
const CFDictionaryValueCallBacks kSimulatedDictionaryValueCallBacks{0, &containerRetain, &containerRelease,
                                                                    nullptr, nullptr};

platform::CoreGraphicsAPI simulatedCoreGraphics(CFStringRef duplicateModesKey) {
    return platform::CoreGraphicsAPI{
        .CGGetActiveDisplayList = &getActiveDisplayList,
        .CGDisplayVendorNumber = &displayVendorNumber,
        .CGDisplayModelNumber = &displayModelNumber,
        .CGDisplaySerialNumber = &displaySerialNumber,
        .CGDisplayIsBuiltin = &displayIsBuiltin,
        .CGDisplayIsMain = &displayIsMain,
        .CGDisplayIsAsleep = &displayIsAsleep,
        .CGDisplayBounds = &displayBounds,
        .CGDisplayMirrorsDisplay = &displayMirrorsDisplay,
        .CGDisplayPixelsWide = &displayPixelsWide,
        .CGDisplayPixelsHigh = &displayPixelsHigh,
        .CGDisplayCopyDisplayMode = &displayCopyDisplayMode,
        .CGDisplayCopyAllDisplayModes = &displayCopyAllDisplayModes,
        .CGDisplayModeGetPixelWidth = &displayModeGetPixelWidth,
        .CGDisplayModeGetPixelHeight = &displayModeGetPixelHeight,
        .CGDisplayModeGetWidth = &displayModeGetWidth,
        .CGDisplayModeGetHeight = &displayModeGetHeight,
        .CGDisplayModeGetRefreshRate = &displayModeGetRefreshRate,
        .CGDisplayModeGetTypeID = &displayModeGetTypeID,
        .CGDisplayModeRetain = &displayModeRetain,
        .CGDisplayModeRelease = &displayModeRelease,
        .CGDisplaySetDisplayMode = &displaySetDisplayMode,
        .CGBeginDisplayConfiguration = &beginDisplayConfiguration,
        .CGConfigureDisplayMirrorOfDisplay = &configureDisplayMirrorOfDisplay,
        .CGConfigureDisplayWithDisplayMode = &configureDisplayWithDisplayMode,
        .CGConfigureDisplayOrigin = &configureDisplayOrigin,
        .CGCompleteDisplayConfiguration = &completeDisplayConfiguration,
        .CGCancelDisplayConfiguration = &cancelDisplayConfiguration,
        .CGDisplayRegisterReconfigurationCallback = &displayRegisterReconfigurationCallback,
        .CGDisplayRemoveReconfigurationCallback = &displayRemoveReconfigurationCallback,
        .kCGDisplayShowDuplicateLowResolutionModes = duplicateModesKey,
    };
}

platform::ColorSyncAPI simulatedColorSync() {
    return platform::ColorSyncAPI{.CGDisplayCreateUUIDFromDisplayID = &displayCreateUUIDFromDisplayID};
}

platform::CoreFoundationAPI simulatedCoreFoundation(CFBooleanRef trueValue) {
    return platform::CoreFoundationAPI{
        .CFGetTypeID = &getTypeID,
        .CFRetain = &retain,
        .CFRelease = &release,
        .CFArrayGetTypeID = &arrayGetTypeID,
        .CFArrayCreate = &arrayCreate,
        .CFArrayGetCount = &arrayGetCount,
        .CFArrayGetValueAtIndex = &arrayGetValueAtIndex,
        .CFDictionaryCreate = &dictionaryCreate,
        .CFUUIDCreateString = &uuidCreateString,
        .CFStringCreateWithBytes = &stringCreateWithBytes,
        .CFStringCreateWithCString = &stringCreateWithCString,
        .CFStringGetCString = &stringGetCString,
        .CFStringGetLength = &stringGetLength,
        .CFStringGetMaximumSizeForEncoding = &stringGetMaximumSizeForEncoding,
        .CFStringGetCStringPtr = &stringGetCStringPtr,
        .kCFAllocatorDefault = nullptr,
        .kCFBooleanTrue = trueValue,
        .kCFTypeArrayCallBacks = &kSimulatedArrayCallBacks,
        .kCFTypeDictionaryKeyCallBacks = &kSimulatedDictionaryKeyCallBacks,
        .kCFTypeDictionaryValueCallBacks = &kSimulatedDictionaryValueCallBacks,
    };
}

platform::ObjCRuntimeAPI simulatedObjCRuntime() {
    return platform::ObjCRuntimeAPI{
        .objc_lookUpClass = &lookUpClass,
        .objc_getClass = &getClass,
        .sel_registerName = &registerName,
        .sel_getName = &selectorName,
        .class_respondsToSelector = &classRespondsToSelector,
        .class_getMethodImplementation = &classGetMethodImplementation,
        .object_getClass = &objectGetClass,
        .class_getName = &classGetName,
        .objc_autoreleasePoolPush = &autoreleasePoolPush,
        .objc_autoreleasePoolPop = &autoreleasePoolPop,
    };
}

platform::DispatchAPI simulatedDispatch() {
    return platform::DispatchAPI{.dispatch_get_global_queue = &getGlobalQueue};
}

}  // namespace screenweaver::simulation
