#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "Platform/X11/X11Connection.hpp"

/// The RandR configuration of a connection's screen: reading it and changing it. Coordinates are
/// the screen's, in pixels, with the top-left corner at (0,0) and y growing downwards:
///
///     (0,0) +-----------+------------+ (2048+5120, 0)
///           |  DUMMY0   |  monitor   |
///           | 2048x1536 |  without   |
///           |           |  outputs   |
///           +-----------+------------+
///
/// Every function expects its caller to hold the connection (`X11Connection::exclusive()`).
namespace screenweaver::platform::x11::RandRScreen {

/// Positions on the screen are signed 16-bit: no monitor reaches beyond this edge, and no screen
/// that holds monitors is wider or higher.
inline constexpr std::uint32_t farthestEdge = 0x7FFF;

/// One monitor: what a desktop places windows on. The server makes one for each active output
/// (`automatic`); clients may add monitors of their own, with or without outputs.
struct Monitor {
    xcb_atom_t name = XCB_ATOM_NONE;
    std::string nameText;
    bool primary = false;
    bool automatic = false;
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint32_t widthInMillimeters = 0;
    std::uint32_t heightInMillimeters = 0;
    std::vector<xcb_randr_output_t> outputs;

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// One display mode the server knows.
struct Mode {
    xcb_randr_mode_t id = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    /// Pixel clock in hertz and the mode's totals, from which its refresh rate follows.
    std::uint32_t dotClock = 0;
    std::uint16_t hTotal = 0;
    std::uint16_t vTotal = 0;
    std::uint32_t flags = 0;

    /// Frames per second: the dot clock over the totals, doubled for interlaced and halved for
    /// double-scanned modes; 0 when the totals are 0.
    [[nodiscard]] double refreshRate() const;

    friend bool operator==(const Mode&, const Mode&) = default;
};

/// One CRTC: a scan-out engine showing a rectangle of the screen on its outputs.
struct Crtc {
    xcb_randr_crtc_t id = 0;
    std::int16_t x = 0;
    std::int16_t y = 0;
    /// The rectangle on the screen, after any transform (so a scaled output covers its scaled size).
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    /// 0 when the CRTC is off.
    xcb_randr_mode_t mode = 0;
    std::uint16_t rotation = XCB_RANDR_ROTATION_ROTATE_0;
    std::vector<xcb_randr_output_t> outputs;

    friend bool operator==(const Crtc&, const Crtc&) = default;
};

/// One output: a connector.
struct Output {
    xcb_randr_output_t id = 0;
    std::string name;
    bool connected = false;
    /// 0 when the output is off.
    xcb_randr_crtc_t crtc = 0;
    /// The modes it can show, preferred ones first, as the server lists them.
    std::vector<xcb_randr_mode_t> modes;

    friend bool operator==(const Output&, const Output&) = default;
};

/// Every CRTC, output and mode, read in one round of requests.
struct Resources {
    /// The server's configuration time, which changes with every configuration; a change made
    /// against an older one is refused.
    xcb_timestamp_t configTimestamp = 0;
    std::vector<Crtc> crtcs;
    std::vector<Output> outputs;
    std::vector<Mode> modes;

    [[nodiscard]] const Crtc* crtc(xcb_randr_crtc_t id) const;
    [[nodiscard]] const Output* output(xcb_randr_output_t id) const;
    [[nodiscard]] const Mode* mode(xcb_randr_mode_t id) const;

    friend bool operator==(const Resources&, const Resources&) = default;
};

/// The screen's size in pixels and in millimetres.
struct ScreenSize {
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint32_t widthInMillimeters = 0;
    std::uint32_t heightInMillimeters = 0;

    friend bool operator==(const ScreenSize&, const ScreenSize&) = default;
};

/// The smallest and largest screen the server can make.
struct ScreenSizeRange {
    std::uint16_t minimumWidth = 0;
    std::uint16_t minimumHeight = 0;
    std::uint16_t maximumWidth = 0;
    std::uint16_t maximumHeight = 0;
};

/// The active monitors, in the server's order, with their names read.
[[nodiscard]] std::expected<std::vector<Monitor>, X11Error> monitors(const X11Connection& connection);

[[nodiscard]] std::expected<Resources, X11Error> resources(const X11Connection& connection);

/// The output's EDID block as the server has it; empty when the output has none.
[[nodiscard]] std::expected<std::vector<std::uint8_t>, X11Error> edid(const X11Connection& connection,
                                                                      xcb_randr_output_t output);

/// The primary output, absent when none is set.
[[nodiscard]] std::expected<std::optional<xcb_randr_output_t>, X11Error> primaryOutput(
    const X11Connection& connection);

/// The screen's size now. The millimetres come from RandR's screen information, which on some
/// servers probes the hardware: read it only before a change.
[[nodiscard]] std::expected<ScreenSize, X11Error> screenSize(const X11Connection& connection);

[[nodiscard]] std::expected<ScreenSizeRange, X11Error> screenSizeRange(const X11Connection& connection);

/// The changes. Each waits for the server's answer.
[[nodiscard]] std::expected<void, X11Error> setScreenSize(const X11Connection& connection,
                                                          const ScreenSize& size);
/// Adds the monitor. Its name must be new: Xorg refuses (BadValue) a name it already has a monitor of.
[[nodiscard]] std::expected<void, X11Error> setMonitor(const X11Connection& connection,
                                                       const Monitor& monitor);
/// Puts `replacement` in the place of `current`, a monitor of the same name: the old one is
/// deleted and the new one added, and should the addition fail the old one is added back. Under a
/// grab of the server no other client sees the moment between.
[[nodiscard]] std::expected<void, X11Error> replaceMonitor(const X11Connection& connection,
                                                           const Monitor& current,
                                                           const Monitor& replacement);
[[nodiscard]] std::expected<void, X11Error> deleteMonitor(const X11Connection& connection, xcb_atom_t name);
/// Which monitor a change failed on, and why.
struct MonitorFailure {
    xcb_atom_t monitor = XCB_ATOM_NONE;
    X11Error error;
};
/// Turns the monitors clients added (`current`, in the server's order) into `wanted` while keeping
/// their order: from the first that differs on, the old ones are deleted and the wanted ones added
/// in order (the server lists monitors in the order they were added). Under a grab of the server
/// no other client sees the moment between.
[[nodiscard]] std::expected<void, MonitorFailure> rewriteMonitors(const X11Connection& connection,
                                                                  const std::vector<Monitor>& current,
                                                                  const std::vector<Monitor>& wanted);
/// Shows `mode` on `outputs` from (x, y), or turns the CRTC off with mode 0 and no outputs.
[[nodiscard]] std::expected<void, X11Error> setCrtc(const X11Connection& connection,
                                                    xcb_timestamp_t configTimestamp, const Crtc& crtc);

/// For each monitor, the monitor it mirrors: one that covers exactly the same rectangle. Of a group
/// of such monitors the primary one (else the first listed) is shown and mirrors nothing; every
/// other one mirrors it.
[[nodiscard]] std::vector<std::optional<xcb_atom_t>> mirrorSources(const std::vector<Monitor>& monitors);

/// The smallest rectangle from (0,0) that holds every monitor: the screen they need.
[[nodiscard]] std::pair<std::uint32_t, std::uint32_t> extentOf(const std::vector<Monitor>& monitors);

/// `millimeters` for a side of `from` pixels, scaled to a side of `pixels` at the same density.
[[nodiscard]] std::uint32_t scaledMillimeters(std::uint32_t millimeters, std::uint32_t pixels,
                                              std::uint32_t from);

/// `size` at `width` x `height` pixels, its millimetres scaled alike so the density stays.
[[nodiscard]] ScreenSize resized(const ScreenSize& size, std::uint32_t width, std::uint32_t height);

/// Grows the screen, where needed, to reach `right` and `bottom`. Gives the size it had before when
/// it grew, nothing when it was large enough. A screen the server cannot make is its refusal. The
/// first growth also leaves the size the screen had before on the root window, for `shrinkToHold`
/// (whichever process shrinks it) to give back exactly.
[[nodiscard]] std::expected<std::optional<ScreenSize>, X11Error> growToReach(const X11Connection& connection,
                                                                             std::uint32_t right,
                                                                             std::uint32_t bottom);

/// Shrinks the screen to hold exactly `monitors` (never below the server's smallest screen), and
/// not at all where it already does; true when it shrank. A screen shrunk back to the pixels it had
/// before the first growth gets that size back exactly, millimetres included; any other keeps its
/// density.
[[nodiscard]] std::expected<bool, X11Error> shrinkToHold(const X11Connection& connection,
                                                         const std::vector<Monitor>& monitors);

/// Tells every client that listens for RandR's events that the monitors changed. Xorg sends no
/// event when a monitor is added or deleted, but it does when the screen is set, even to the size
/// it has: a change of monitors that leaves the screen as it was is followed by this.
[[nodiscard]] std::expected<void, X11Error> announceChange(const X11Connection& connection);
}  // namespace screenweaver::platform::x11::RandRScreen
