#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <vector>

#include "Platform/X11/RandRScreen.hpp"

namespace screenweaver::testing {

/// Everything of the X server's configuration that the X backend may touch, read on a connection
/// of its own: the screen's size (millimetres included), the monitors, the CRTCs, outputs and
/// modes, the primary output, and how many windows the root window has. Two states are equal
/// exactly when the server looks the same to every client.
struct XServerState {
    platform::x11::RandRScreen::ScreenSize screen;
    std::vector<platform::x11::RandRScreen::Monitor> monitors;
    std::vector<platform::x11::RandRScreen::Crtc> crtcs;
    std::vector<platform::x11::RandRScreen::Output> outputs;
    std::optional<xcb_randr_output_t> primary;
    std::size_t rootWindows = 0;

    friend bool operator==(const XServerState&, const XServerState&) = default;
};

/// The state of the server `DISPLAY` names. Fails the calling test when it cannot be read.
[[nodiscard]] XServerState readXServerState();

/// Readable in a failed expectation.
void PrintTo(const XServerState& state, std::ostream* stream);

}  // namespace screenweaver::testing
