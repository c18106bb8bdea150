#include "Platform/X11/ServerGrab.hpp"

namespace screenweaver::platform::x11 {

std::expected<ServerGrab, X11Error> ServerGrab::grab(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    if (auto grabbed = connection.check("GrabServer", api.xcb_grab_server_checked(connection.get()));
        !grabbed) {
        return std::unexpected{std::move(grabbed.error())};
    }
    return ServerGrab{connection};
}

ServerGrab::~ServerGrab() {
    if (connection_ != nullptr) {
        const XCBRandRAPI& api = connection_->api();
        // Nothing to report: on a broken connection the server has let go of the grab already.
        (void)connection_->check("UngrabServer", api.xcb_ungrab_server_checked(connection_->get()));
    }
}

}  // namespace screenweaver::platform::x11
