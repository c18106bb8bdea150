#include "HeadlessXServer/XServerState.hpp"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include "Platform/X11/X11Connection.hpp"

namespace screenweaver::testing {

namespace RandRScreen = platform::x11::RandRScreen;

XServerState readXServerState() {
    XServerState state;
    auto connection = platform::x11::X11Connection::open(platform::x11::systemXCBRandR());
    if (!connection) {
        ADD_FAILURE() << "no connection to the X server: " << connection.error().reason();
        return state;
    }
    const platform::x11::X11Connection& server = **connection;
    const auto held = server.exclusive();
    const auto failed = [](const platform::x11::X11Error& error) {
        ADD_FAILURE() << "reading the X server's state: " << error.reason();
    };
    if (auto screen = RandRScreen::screenSize(server)) {
        state.screen = *screen;
    } else {
        failed(screen.error());
    }
    if (auto monitors = RandRScreen::monitors(server)) {
        state.monitors = std::move(*monitors);
    } else {
        failed(monitors.error());
    }
    if (auto resources = RandRScreen::resources(server)) {
        state.crtcs = std::move(resources->crtcs);
        state.outputs = std::move(resources->outputs);
    } else {
        failed(resources.error());
    }
    if (auto primary = RandRScreen::primaryOutput(server)) {
        state.primary = *primary;
    } else {
        failed(primary.error());
    }
    // An independent look at the windows, straight through libxcb.
    xcb_query_tree_reply_t* const tree =
        xcb_query_tree_reply(server.get(), xcb_query_tree(server.get(), server.root()), nullptr);
    if (tree != nullptr) {
        state.rootWindows = static_cast<std::size_t>(xcb_query_tree_children_length(tree));
        std::free(tree);
    } else {
        ADD_FAILURE() << "reading the root window's children";
    }
    return state;
}

void PrintTo(const XServerState& state, std::ostream* stream) {
    *stream << "screen " << state.screen.width << "x" << state.screen.height << " ("
            << state.screen.widthInMillimeters << "x" << state.screen.heightInMillimeters << " mm), "
            << state.rootWindows << " windows, monitors:";
    for (const RandRScreen::Monitor& monitor : state.monitors) {
        *stream << " [" << monitor.nameText << " " << monitor.width << "x" << monitor.height << "+"
                << monitor.x << "+" << monitor.y << " " << monitor.widthInMillimeters << "x"
                << monitor.heightInMillimeters << " mm" << (monitor.primary ? " primary" : "") << "]";
    }
    *stream << ", CRTCs:";
    for (const RandRScreen::Crtc& crtc : state.crtcs) {
        *stream << " [" << crtc.id << " mode " << crtc.mode << " " << crtc.width << "x" << crtc.height << "+"
                << crtc.x << "+" << crtc.y << "]";
    }
}

}  // namespace screenweaver::testing
