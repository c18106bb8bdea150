#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// The CoreGraphics display services the system uses, one entry per function under its Apple name
/// and with its exact type. On macOS the entries are the system's functions; in tests they are the
/// simulated window server's. Ownership follows CoreFoundation's rule: `Copy` functions return a
/// value the caller releases; everything else is borrowed.
struct CoreGraphicsAPI {
    // Display list and properties. Display IDs are the window server's 32-bit display numbers;
    // bounds are in global display coordinates (points, origin at the main display's top-left,
    // y growing downwards).
    CGError (*CGGetActiveDisplayList)(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                                      uint32_t* displayCount);
    uint32_t (*CGDisplayVendorNumber)(CGDirectDisplayID display);
    uint32_t (*CGDisplayModelNumber)(CGDirectDisplayID display);
    uint32_t (*CGDisplaySerialNumber)(CGDirectDisplayID display);
    boolean_t (*CGDisplayIsBuiltin)(CGDirectDisplayID display);
    boolean_t (*CGDisplayIsMain)(CGDirectDisplayID display);
    boolean_t (*CGDisplayIsAsleep)(CGDirectDisplayID display);
    CGRect (*CGDisplayBounds)(CGDirectDisplayID display);
    CGDirectDisplayID (*CGDisplayMirrorsDisplay)(CGDirectDisplayID display);
    size_t (*CGDisplayPixelsWide)(CGDirectDisplayID display);
    size_t (*CGDisplayPixelsHigh)(CGDirectDisplayID display);

    // Modes. The copied mode and the copied array are owned by the caller; the array's elements are
    // borrowed from it.
    CGDisplayModeRef (*CGDisplayCopyDisplayMode)(CGDirectDisplayID display);
    CFArrayRef (*CGDisplayCopyAllDisplayModes)(CGDirectDisplayID display, CFDictionaryRef options);
    size_t (*CGDisplayModeGetPixelWidth)(CGDisplayModeRef mode);
    size_t (*CGDisplayModeGetPixelHeight)(CGDisplayModeRef mode);
    size_t (*CGDisplayModeGetWidth)(CGDisplayModeRef mode);   // points
    size_t (*CGDisplayModeGetHeight)(CGDisplayModeRef mode);  // points
    double (*CGDisplayModeGetRefreshRate)(CGDisplayModeRef mode);
    CFTypeID (*CGDisplayModeGetTypeID)(void);
    CGDisplayModeRef (*CGDisplayModeRetain)(CGDisplayModeRef mode);  // NULL-safe
    void (*CGDisplayModeRelease)(CGDisplayModeRef mode);             // NULL-safe
    CGError (*CGDisplaySetDisplayMode)(CGDirectDisplayID display, CGDisplayModeRef mode,
                                       CFDictionaryRef options);

    // Configuration transactions: begin hands out a handle, the Configure calls stage changes,
    // complete applies all of them at once and cancel none; either consumes the handle.
    CGError (*CGBeginDisplayConfiguration)(CGDisplayConfigRef* config);
    CGError (*CGConfigureDisplayMirrorOfDisplay)(CGDisplayConfigRef config, CGDirectDisplayID display,
                                                 CGDirectDisplayID master);
    CGError (*CGConfigureDisplayWithDisplayMode)(CGDisplayConfigRef config, CGDirectDisplayID display,
                                                 CGDisplayModeRef mode, CFDictionaryRef options);
    CGError (*CGConfigureDisplayOrigin)(CGDisplayConfigRef config, CGDirectDisplayID display, int32_t x,
                                        int32_t y);
    CGError (*CGCompleteDisplayConfiguration)(CGDisplayConfigRef config, CGConfigureOption option);
    CGError (*CGCancelDisplayConfiguration)(CGDisplayConfigRef config);

    // Reconfiguration callbacks, delivered in bursts on a thread of the window server's choosing:
    // one call with kCGDisplayBeginConfigurationFlag per online display before a change, then one
    // call per affected display after it.
    CGError (*CGDisplayRegisterReconfigurationCallback)(CGDisplayReconfigurationCallBack callback,
                                                        void* userInfo);
    CGError (*CGDisplayRemoveReconfigurationCallback)(CGDisplayReconfigurationCallBack callback,
                                                      void* userInfo);

    // The options key that adds the low-resolution duplicates of scaled modes to
    // CGDisplayCopyAllDisplayModes (with kCFBooleanTrue as its value).
    CFStringRef kCGDisplayShowDuplicateLowResolutionModes;
};

}  // namespace screenweaver::platform
