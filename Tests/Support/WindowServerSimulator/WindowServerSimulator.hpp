#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "Platform/PlatformAPI.hpp"
#include "WindowServerSimulator/SimulatedDisplay.hpp"
#include "WindowServerSimulator/VirtualDisplayScript.hpp"

namespace screenweaver::simulation {

class SimulatorState;

/// The families of recorded calls, for reading one slice of the log.
enum class CallFamily {
    coreGraphics,    // CG... functions
    colorSync,       // CGDisplayCreateUUIDFromDisplayID
    coreFoundation,  // CF... functions
    objcRuntime,     // objc_..., sel_..., class_..., object_... functions
    messages,        // Objective-C messages received by simulated objects
    dispatch,        // dispatch_get_global_queue
};

/// How a scripted failure strikes one function.
struct Failure {
    CGError error = kCGErrorFailure;  // what a CGError-returning function answers; others answer NULL
    int skip = 0;                     // calls that succeed before the first failure
    std::optional<int> count{};       // failing calls after that; absent: every later call
};

/// A simulated macOS window server behind the platform tables, for tests and for development builds
/// on machines without macOS. It implements every entry of `PlatformAPI` over an in-memory model:
/// displays and their modes, configuration transactions, reconfiguration callbacks, CoreFoundation
/// values with reference counts, and an Objective-C runtime holding the four private
/// virtual-display classes. Every call is recorded and any call can be made to fail.
///
/// Only one simulator may exist at a time (the C functions of the tables reach it through a
/// process-wide pointer); creating a second one stops the process. All members are thread-safe.
///
/// Call log. Each call is one line, arguments in the function's order:
///
///     CGGetActiveDisplayList(maxDisplays=0, activeDisplays=NULL)
///     CGGetActiveDisplayList(maxDisplays=2, activeDisplays=buffer)
///     CGDisplayBounds(display=1)
///     CGDisplayCopyAllDisplayModes(display=1, options={kCGDisplayShowDuplicateLowResolutionModes: true})
///     CGDisplayModeGetPixelWidth(mode=3840x2160/1920x1080@60.0)      pixels/points@Hz
///     CGBeginDisplayConfiguration()                                  handles count 1, 2, ...
///     CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)
///     CGConfigureDisplayWithDisplayMode(config=1, display=2, mode=1920x1080/1920x1080@60.0, options=NULL)
///     CGConfigureDisplayOrigin(config=1, display=2, x=1920, y=0)
///     CGCompleteDisplayConfiguration(config=1, option=kCGConfigurePermanently)
///     CGDisplayCreateUUIDFromDisplayID(displayID=1)
///     CFStringCreateWithBytes("Screen", encoding=UTF8)
///     CFRelease(<CGVirtualDisplayDescriptor>)
///     objc_lookUpClass("CGVirtualDisplay")
///     sel_registerName("setName:")
///     dispatch_get_global_queue(identifier=QOS_CLASS_USER_INITIATED, flags=0)
///     +[CGVirtualDisplay alloc]
///     -[CGVirtualDisplayDescriptor setMaxPixelsWide: 5120]
///     -[CGVirtualDisplayDescriptor setSizeInMillimeters: (866.9866666666666, 243.84)]
///     -[CGVirtualDisplayDescriptor setName: "Screenweaver"]
///     -[CGVirtualDisplayDescriptor setQueue: <global queue QOS_CLASS_USER_INITIATED>]
///     -[CGVirtualDisplayMode initWithWidth: 2560 height: 720 refreshRate: 60.0]
///     -[CGVirtualDisplaySettings setModes: [<CGVirtualDisplayMode 2560x720@60.0>]]
///     -[CGVirtualDisplaySettings setIsReference: YES]
///     -[CGVirtualDisplayDescriptor respondsToSelector: setSerialNumber:]
///     +[CGVirtualDisplayMode instancesRespondToSelector: initWithWidth:height:refreshRate:transferFunction:]
///
/// Doubles print in their shortest round-trip form with at least one fractional digit; strings in
/// double quotes; values of other kinds as <ClassName ...>; a null pointer as NULL.
///
/// Parameter types of the private classes' methods (what a sender must cast the implementation to):
/// `setQueue:` dispatch_queue_t; `setName:` and `setModes:` id (a CFString / CFArray bridged);
/// `setMaxPixelsWide:`, `setMaxPixelsHigh:`, `setSerialNum:`, `setSerialNumber:`, `setVendorID:`,
/// `setProductID:`, `setHiDPI:`, `setRotation:` unsigned int; `setSizeInMillimeters:` CGSize;
/// `setRedPrimary:`, `setGreenPrimary:`, `setBluePrimary:`, `setWhitePoint:` CGPoint;
/// `setIsReference:` BOOL; `initWithWidth:height:refreshRate:` (unsigned int, unsigned int, double);
/// `initWithWidth:height:refreshRate:transferFunction:` adds an unsigned int; `initWithDescriptor:`
/// and `applySettings:` id; `applySettings:` answers BOOL and `displayID` unsigned int.
class WindowServerSimulator {
public:
    /// Delays (a virtual display that appears late) are measured on `clock`, which must outlive the
    /// simulator; tests pass a `ManualClock`.
    explicit WindowServerSimulator(const Clock& clock);
    ~WindowServerSimulator();

    WindowServerSimulator(const WindowServerSimulator&) = delete;
    WindowServerSimulator& operator=(const WindowServerSimulator&) = delete;

    /// Every table pointing at this simulator, with its process facts (by default macOS 15 and the
    /// root user). The facts are copied: set them before taking the platform.
    [[nodiscard]] platform::PlatformAPI platform() const;
    void setProcessFacts(platform::ProcessFacts facts);

    // ---- The display model. Each change delivers a burst of reconfiguration callbacks.

    /// Connects a display (its ID must be new and not 0).
    void addDisplay(SimulatedDisplay display);
    void removeDisplay(CGDirectDisplayID displayID);

    /// Connects or disconnects a display once `delay` has passed on the simulator's clock. Like
    /// every timed change of the simulator, it happens at the first platform call (or
    /// `waitForCallbacks`) at or after that time, so no thread of the simulator sleeps on the clock
    /// and a test's count of sleepers is only its own.
    void addDisplayLater(SimulatedDisplay display, Clock::Duration delay);
    void removeDisplayLater(CGDirectDisplayID displayID, Clock::Duration delay);

    void moveDisplay(CGDirectDisplayID displayID, CGPoint origin);
    void setCurrentMode(CGDirectDisplayID displayID, std::size_t modeIndex);
    void setMirrorSource(CGDirectDisplayID displayID, CGDirectDisplayID source);

    /// Changes a display's fields without any callback (asleep, mode list answer, ...). The ID must
    /// stay the same.
    void editDisplayQuietly(CGDirectDisplayID displayID, const std::function<void(SimulatedDisplay&)>& edit);

    [[nodiscard]] std::optional<SimulatedDisplay> display(CGDirectDisplayID displayID) const;

    /// The active displays as CGGetActiveDisplayList lists them: the main display first, then the
    /// others in the order they were connected.
    [[nodiscard]] std::vector<CGDirectDisplayID> activeDisplayIDs() const;

    // ---- Failures.

    /// Makes calls of `function` (its Apple name, e.g. "CGCompleteDisplayConfiguration") fail. Every
    /// function answering a CGError answers `failure.error`; the ones that hand out a value answer
    /// NULL (CGDisplayCopyDisplayMode, CGDisplayCopyAllDisplayModes, CGDisplayCreateUUIDFromDisplayID,
    /// CFUUIDCreateString, CFStringCreateWithBytes, CFStringCreateWithCString,
    /// dispatch_get_global_queue). Plain property reads cannot fail on the real system and do not here.
    /// The private classes fail through `setVirtualDisplayScript`, `removeClass` and `removeSelector`.
    void failCalls(std::string_view function, Failure failure = {});
    void clearFailures();

    // ---- Reconfiguration callbacks.

    /// Blocks until every burst queued so far has been delivered (first bringing in late displays
    /// whose time has come). Must not be called from a callback.
    void waitForCallbacks();
    [[nodiscard]] std::size_t registeredCallbackCount() const;

    // ---- The private classes.

    /// The class is not registered: objc_lookUpClass and objc_getClass answer Nil.
    void removeClass(std::string_view className);
    /// Instances (or, for "alloc" and "instancesRespondToSelector:", the class) no longer answer the
    /// selector.
    void removeSelector(std::string_view className, std::string_view selector);
    void setVirtualDisplayScript(VirtualDisplayScript script);
    /// Every CGVirtualDisplay that accepted its descriptor, in order.
    [[nodiscard]] std::vector<VirtualDisplayRecord> virtualDisplays() const;
    /// How many times -initWithDescriptor: was sent.
    [[nodiscard]] std::size_t descriptorAttempts() const;

    // ---- The call log.

    [[nodiscard]] std::vector<std::string> calls() const;
    [[nodiscard]] std::vector<std::string> calls(CallFamily family) const;
    void clearCalls();

    // ---- Hygiene.

    /// What a test should find empty at its end: CoreFoundation values and Objective-C objects still
    /// alive (other than the constants), autorelease pools left open, configurations neither
    /// completed nor cancelled, callbacks still registered, and misuse seen on the way (releasing a
    /// dead object, popping an unknown pool, a NULL where CoreFoundation would crash, ...).
    [[nodiscard]] std::vector<std::string> hygieneProblems() const;

private:
    std::unique_ptr<SimulatorState> state_;
};

}  // namespace screenweaver::simulation
