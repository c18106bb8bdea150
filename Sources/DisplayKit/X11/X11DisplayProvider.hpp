#pragma once

#include <condition_variable>
#include <cstdint>
#include <expected>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Protocols/DisplayProviding.hpp"
#include "DisplayKit/ChangeDebouncer.hpp"
#include "DisplayKit/FrameMap.hpp"
#include "Platform/X11/X11Connection.hpp"
#include "Platform/X11/XCBDPMSAPI.hpp"

namespace screenweaver {

/// The display provider of an X server, through RandR 1.5: the same arrangement engine as on a Mac
/// (planner, validator, debouncer, broadcaster, settle waiter) over the server's monitors.
///
/// - A display is a monitor, what desktops place windows on; its ID is the monitor's name atom, as
///   for `X11DisplayProbe`. Its bounds are the monitor's rectangle in the screen's coordinates
///   (top-left (0,0), y down, like CoreGraphics' global space); it is main when it is the primary
///   monitor, built in when its output is an internal panel's connector (eDP, LVDS, DSI), asleep
///   when the server has DPMS and it has powered the displays down. Vendor, model and serial
///   numbers come from the EDID of a monitor's first output, and from the name of a monitor this
///   system made.
/// - References: a monitor this system made is `virtual` with the UUID its name carries. Another is
///   `physical` with a text from its EDID: the manufacturer's three letters, the product code in
///   four upper-case hexadecimal digits, "-" and the serial number in eight ("SAM0841-00000001"),
///   or, when the EDID gives serial 0, the connector's name instead ("GSM757A-HDMI-1"). Without an
///   EDID it falls back to vendor-model-serial in decimal with the same error line as on a Mac
///   ("No ColorSync UUID for display N; using 0-0-0").
/// - Modes: an output's RandR modes, each at its refresh rate (the dot clock over the totals), with
///   points scaled as the output's current transform scales its mode; a monitor without an output
///   offers its one current size, at refresh rate 0 (it has no rate of its own, as a Mac reports
///   displays without a fixed one).
/// - `apply` takes the Mac's road (a settled topology, the whole arrangement planned and validated
///   with the same rejection texts) and commits with the server grabbed, so no other client sees a
///   half-done state: the screen grown to hold everything, the CRTCs of mode changes, the other
///   moved CRTCs, the moved monitors without outputs, the screen at its final size. The X screen
///   has nothing left of or above its corner, so an arrangement reaching there is moved as a whole
///   until its leftmost and topmost edges are 0. A failing step restores the configuration read
///   before the first change and fails with `configurationFailed`. Un-mirroring needs no step of
///   its own: mirrored monitors share a rectangle, and the validator lets a plan through only when
///   its placements part them.
/// - Changes: RandR's screen-change, CRTC-change and output-change events, read on a connection of
///   the provider's own by a thread of its own, each signal the debouncer, as CoreGraphics'
///   callback does on a Mac. The thread stops when the provider is destroyed.
///
/// Safe to use from any thread.
class X11DisplayProvider final : public DisplayProviding {
public:
    /// Connects to the X server `DISPLAY` names, twice: for its requests and for its events.
    /// `changeDebounceInterval` is the quiet period that ends a burst of events; `settleTimeout`
    /// bounds how long `apply` waits. `dpms` (absent: no display is ever asleep), the table and
    /// `clock` must outlive the provider.
    [[nodiscard]] static std::expected<std::unique_ptr<X11DisplayProvider>, platform::x11::X11Error> open(
        Clock::Duration changeDebounceInterval, Clock::Duration settleTimeout,
        const platform::x11::XCBRandRAPI& x11 = platform::x11::systemXCBRandR(),
        const platform::x11::XCBDPMSAPI* dpms = &platform::x11::systemXCBDPMS(),
        const Clock& clock = ContinuousClock::shared());

    ~X11DisplayProvider() override;
    X11DisplayProvider(const X11DisplayProvider&) = delete;
    X11DisplayProvider& operator=(const X11DisplayProvider&) = delete;

    [[nodiscard]] std::expected<DisplayTopology, DisplayError> snapshot() const override;
    [[nodiscard]] AsyncStream<DisplayTopology> changes() const override;
    [[nodiscard]] std::expected<std::vector<DisplayModeInfo>, DisplayError> availableModes(
        std::uint32_t displayID) const override;
    [[nodiscard]] std::expected<void, DisplayError> apply(const LayoutPlan& plan,
                                                          const StopToken& stop) override;

    /// The reference of the display `displayID`, as the snapshot gives it; for a display that is not
    /// online, the fallback "0-0-0" with its error line.
    [[nodiscard]] DisplayRef ref(std::uint32_t displayID) const;

private:
    friend struct X11DisplayProviderTestApi;

    X11DisplayProvider(std::shared_ptr<const platform::x11::X11Connection> connection,
                       std::unique_ptr<const platform::x11::X11Connection> events, int wakeUp,
                       const platform::x11::XCBDPMSAPI* dpms, Clock::Duration changeDebounceInterval,
                       Clock::Duration settleTimeout, const Clock& clock);

    [[nodiscard]] std::expected<void, DisplayError> commit(const LayoutPlan& plan,
                                                           const FrameMap& frames) const;

    /// The event thread: signals the debouncer for every RandR event until stopped.
    void readEvents();
    /// Has the event thread read every event the server sent it before now.
    void synchronizeEvents();

    std::shared_ptr<const platform::x11::X11Connection> connection_;
    std::unique_ptr<const platform::x11::X11Connection> events_;
    const platform::x11::XCBDPMSAPI* dpms_;
    const Clock& clock_;
    ChangeDebouncer debouncer_;
    Clock::Duration settleTimeout_;

    // Wakes the event thread (an eventfd the provider owns); what for is in the fields below.
    int wakeUp_;
    std::mutex eventsMutex_;
    std::condition_variable synchronized_;
    bool stopping_ = false;
    std::uint64_t synchronizationsAsked_ = 0;
    std::uint64_t synchronizationsDone_ = 0;
    std::thread eventThread_;
};

}  // namespace screenweaver
