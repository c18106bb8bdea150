#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace screenweaver::platform::x11 {

/// Failures of the X backend's conversation with the X server. Each is an ordinary outcome that
/// its caller reports in its own terms; none ends the process.
struct X11Error {
    /// No connection could be made to the server named by the display name (or `DISPLAY`).
    struct ConnectionFailed {
        std::string reason;
        friend bool operator==(const ConnectionFailed&, const ConnectionFailed&) = default;
    };
    /// The server does not offer RandR 1.5 or later.
    struct ExtensionMissing {
        std::string reason;
        friend bool operator==(const ExtensionMissing&, const ExtensionMissing&) = default;
    };
    /// The server answered a request with an error.
    struct RequestFailed {
        /// The request's protocol name, e.g. "RRSetScreenSize".
        std::string request;
        /// The X error code (8 is BadMatch; RandR's own errors follow the extension's first error).
        std::uint8_t errorCode = 0;
        friend bool operator==(const RequestFailed&, const RequestFailed&) = default;
    };
    /// The server carried out a request but answered with a status other than success (RandR's
    /// configuration requests do, when the configuration changed under them).
    struct RequestRefused {
        std::string request;
        /// The status in words, e.g. "invalid configuration time".
        std::string status;
        friend bool operator==(const RequestRefused&, const RequestRefused&) = default;
    };
    /// The connection broke; every later request on it fails too.
    struct ConnectionLost {
        friend bool operator==(const ConnectionLost&, const ConnectionLost&) = default;
    };

    std::variant<ConnectionFailed, ExtensionMissing, RequestFailed, RequestRefused, ConnectionLost> value;

    static X11Error connectionFailed(std::string reason) { return {ConnectionFailed{std::move(reason)}}; }
    static X11Error extensionMissing(std::string reason) { return {ExtensionMissing{std::move(reason)}}; }
    static X11Error requestFailed(std::string request, std::uint8_t errorCode) {
        return {RequestFailed{std::move(request), errorCode}};
    }
    static X11Error requestRefused(std::string request, std::string status) {
        return {RequestRefused{std::move(request), std::move(status)}};
    }
    static X11Error connectionLost() { return {ConnectionLost{}}; }

    /// Plain English for the reasons the backend's callers compose:
    ///
    ///     RRSetScreenSize failed (BadMatch, X error 8)
    ///     RRSetCrtcConfig refused (invalid configuration time)
    ///     the connection to the X server was lost
    [[nodiscard]] std::string reason() const;

    /// The textual form: `requestFailed(request: "RRSetMonitor", errorCode: 8)`.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const X11Error&, const X11Error&) = default;
};

}  // namespace screenweaver::platform::x11
