#pragma once

#include <cstdint>
#include <cstdlib>
#include <expected>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/X11/X11Error.hpp"
#include "Platform/X11/XCBRandRAPI.hpp"

namespace screenweaver::platform::x11 {

/// Frees what libxcb hands out (replies, errors, events): they are malloc'ed.
struct FreeDeleter {
    void operator()(void* pointer) const { std::free(pointer); }
};
template <class Value>
using XCBPointer = std::unique_ptr<Value, FreeDeleter>;

/// One connection to an X server that offers RandR 1.5 or later, and its screen. Disconnects when
/// destroyed (the server then destroys every resource the connection made). A connection is used
/// by one thread at a time: take `exclusive()` around every conversation with the server.
class X11Connection {
public:
    /// The oldest RandR with monitors.
    static constexpr std::uint32_t requiredRandRMajor = 1;
    static constexpr std::uint32_t requiredRandRMinor = 5;

    /// Connects to the server named by `displayName` (absent: the `DISPLAY` variable, the X
    /// platform's name for the session's server), on the screen the name selects. Fails when no
    /// server answers or when it offers no RandR 1.5.
    [[nodiscard]] static std::expected<std::unique_ptr<X11Connection>, X11Error> open(
        const XCBRandRAPI& api, const std::optional<std::string>& displayName = std::nullopt);

    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] const XCBRandRAPI& api() const { return api_; }
    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    /// The root window of the connection's screen; RandR's screen-wide requests name it.
    [[nodiscard]] xcb_window_t root() const { return root_; }
    /// The code of RandR's first event, to tell its events apart.
    [[nodiscard]] std::uint8_t randrFirstEvent() const { return randrFirstEvent_; }

    /// Holds the connection for one thread's conversation.
    [[nodiscard]] std::unique_lock<std::mutex> exclusive() const { return std::unique_lock{mutex_}; }

    /// Whether the connection broke (the server went away or the socket failed).
    [[nodiscard]] bool broken() const;

    /// The reply to a request, or why there is none: the server's error, or a broken connection.
    /// `request` is the protocol name the error is reported under.
    template <class Reply, class Cookie>
    [[nodiscard]] std::expected<XCBPointer<Reply>, X11Error> reply(
        std::string_view request, Reply* (*replyFunction)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
        Cookie cookie) const {
        xcb_generic_error_t* error = nullptr;
        XCBPointer<Reply> answer{replyFunction(connection_, cookie, &error)};
        if (answer) {
            return answer;
        }
        return std::unexpected{failure(request, XCBPointer<xcb_generic_error_t>{error})};
    }

    /// Waits for the server to process a checked request that has no reply.
    [[nodiscard]] std::expected<void, X11Error> check(std::string_view request,
                                                      xcb_void_cookie_t cookie) const;
    /// The same through another table's `xcb_request_check` (an extension's, or one standing in
    /// for it).
    [[nodiscard]] std::expected<void, X11Error> check(
        std::string_view request, xcb_void_cookie_t cookie,
        xcb_generic_error_t* (*requestCheck)(xcb_connection_t*, xcb_void_cookie_t)) const;

    /// The atom of `name`, made if the server has none yet. Atoms never change while the server
    /// runs, so they are remembered.
    [[nodiscard]] std::expected<xcb_atom_t, X11Error> atom(std::string_view name) const;
    /// The name of `atom`, remembered likewise.
    [[nodiscard]] std::expected<std::string, X11Error> atomName(xcb_atom_t atom) const;

private:
    X11Connection(const XCBRandRAPI& api, xcb_connection_t* connection, xcb_window_t root,
                  std::uint8_t randrFirstEvent);

    [[nodiscard]] X11Error failure(std::string_view request, XCBPointer<xcb_generic_error_t> error) const;

    const XCBRandRAPI& api_;
    xcb_connection_t* const connection_;
    const xcb_window_t root_;
    const std::uint8_t randrFirstEvent_;
    mutable std::mutex mutex_;
    mutable std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    mutable std::map<xcb_atom_t, std::string> atomNames_;
};

}  // namespace screenweaver::platform::x11
