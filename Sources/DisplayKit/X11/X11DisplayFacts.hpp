#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "Platform/X11/EDIDIdentity.hpp"
#include "Platform/X11/RandRScreen.hpp"
#include "Platform/X11/XCBDPMSAPI.hpp"

/// What an X server says of its displays, as `X11DisplayProvider` reports them: the snapshot, the
/// references and the modes. Each function holds the connection for its whole conversation, except
/// `readScreen` and the value functions, whose caller holds it.
namespace screenweaver::X11DisplayFacts {

/// The monitors and the CRTCs, outputs and modes behind them, read together.
struct Screen {
    std::vector<platform::x11::RandRScreen::Monitor> monitors;
    platform::x11::RandRScreen::Resources resources;

    /// A monitor's first output and the CRTC showing it; null for a monitor without outputs (or
    /// an output that shows nothing).
    [[nodiscard]] const platform::x11::RandRScreen::Output* outputOf(
        const platform::x11::RandRScreen::Monitor& monitor) const;
    [[nodiscard]] const platform::x11::RandRScreen::Crtc* crtcOf(
        const platform::x11::RandRScreen::Monitor& monitor) const;
    [[nodiscard]] const platform::x11::RandRScreen::Monitor* monitor(std::uint32_t displayID) const;
};

[[nodiscard]] std::expected<Screen, platform::x11::X11Error> readScreen(
    const platform::x11::X11Connection& connection);

/// How many points a pixel of the monitor's CRTC covers: its rectangle over its mode's size, 1
/// without a transform (and for a monitor without outputs).
[[nodiscard]] double pointScale(const Screen& screen, const platform::x11::RandRScreen::Monitor& monitor);

/// A mode as the provider lists it: its pixels, its points at `scale`, its refresh rate.
[[nodiscard]] DisplayModeInfo modeInfo(const platform::x11::RandRScreen::Mode& mode, double scale);

/// The one mode of a monitor without outputs: its size in pixels and points, at refresh rate 0.
[[nodiscard]] DisplayModeInfo ownSize(const platform::x11::RandRScreen::Monitor& monitor);

/// The `physical` reference text of a display with an EDID: "SAM0841-00000001", or with serial 0
/// the connector's name in place of the serial ("GSM757A-HDMI-1").
[[nodiscard]] std::string physicalReference(const platform::x11::EDIDIdentity& identity,
                                            std::string_view connector);

/// Every monitor as a `LiveDisplay`, in the server's order; `enumerationFailed` when the server
/// cannot be read. `dpms` absent or without the extension: no display is asleep.
[[nodiscard]] std::expected<DisplayTopology, DisplayError> snapshot(
    const platform::x11::X11Connection& connection, const platform::x11::XCBDPMSAPI* dpms);

/// The reference the snapshot gives `displayID`; for a display not online, the fallback "0-0-0".
[[nodiscard]] DisplayRef ref(const platform::x11::X11Connection& connection, std::uint32_t displayID);

/// The display's modes as the server lists them (not normalised); `modeListUnavailable` for a
/// display that is not online or lists none.
[[nodiscard]] std::expected<std::vector<DisplayModeInfo>, DisplayError> modes(
    const platform::x11::X11Connection& connection, std::uint32_t displayID);

}  // namespace screenweaver::X11DisplayFacts
