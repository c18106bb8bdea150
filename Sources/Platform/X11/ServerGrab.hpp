#pragma once

#include <expected>
#include <utility>

#include "Platform/X11/X11Connection.hpp"

namespace screenweaver::platform::x11 {

/// Holds the X server for one connection while a change of several steps is made, so no other
/// client sees it half done (or changes the screen between our reading and our writing). The
/// grab ends when the owner is destroyed. The caller holds the connection throughout.
class ServerGrab {
public:
    [[nodiscard]] static std::expected<ServerGrab, X11Error> grab(const X11Connection& connection);

    ServerGrab(ServerGrab&& other) noexcept : connection_(std::exchange(other.connection_, nullptr)) {}
    ServerGrab& operator=(ServerGrab&&) = delete;
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ~ServerGrab();

private:
    explicit ServerGrab(const X11Connection& connection) : connection_(&connection) {}

    const X11Connection* connection_;
};

}  // namespace screenweaver::platform::x11
