#include "X11Testing.hpp"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace screenweaver::testing {

void waitUntilWindowIsGone(xcb_window_t window) {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    for (;;) {
        xcb_generic_error_t* error = nullptr;
        xcb_get_window_attributes_reply_t* const attributes = xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, window), &error);
        const bool gone = attributes == nullptr;
        std::free(attributes);
        std::free(error);
        if (gone || xcb_connection_has_error(connection) != 0) {
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    xcb_disconnect(connection);
}

}  // namespace screenweaver::testing
