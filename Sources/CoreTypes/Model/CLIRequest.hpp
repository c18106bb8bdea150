#pragma once

#include <optional>
#include <string>
#include <variant>

namespace screenweaver {

/// One request of the command-line tool to the application. Display references travel in their
/// key text.
struct CLIRequest {
    /// `list`: the saved groups.
    struct List {
        friend bool operator==(const List&, const List&) = default;
    };
    /// `activate(group:)`
    struct Activate {
        std::string group;
        friend bool operator==(const Activate&, const Activate&) = default;
    };
    /// `deactivate`: the active group.
    struct Deactivate {
        friend bool operator==(const Deactivate&, const Deactivate&) = default;
    };
    /// `capture(group:)`: the current arrangement, into the named group when there is one.
    struct Capture {
        std::optional<std::string> group;
        friend bool operator==(const Capture&, const Capture&) = default;
    };
    /// `status`
    struct Status {
        friend bool operator==(const Status&, const Status&) = default;
    };
    /// `displays`: the live displays.
    struct Displays {
        friend bool operator==(const Displays&, const Displays&) = default;
    };
    /// `displayEDID(ref:)`
    struct DisplayEDID {
        std::string ref;
        friend bool operator==(const DisplayEDID&, const DisplayEDID&) = default;
    };
    /// `protectDisplay(ref:isProtected:)`
    struct ProtectDisplay {
        std::string ref;
        bool isProtected = false;
        friend bool operator==(const ProtectDisplay&, const ProtectDisplay&) = default;
    };

    std::variant<List, Activate, Deactivate, Capture, Status, Displays, DisplayEDID, ProtectDisplay> value;

    static CLIRequest list() { return {List{}}; }
    static CLIRequest activate(std::string group) { return {Activate{std::move(group)}}; }
    static CLIRequest deactivate() { return {Deactivate{}}; }
    static CLIRequest capture(std::optional<std::string> group) { return {Capture{std::move(group)}}; }
    static CLIRequest status() { return {Status{}}; }
    static CLIRequest displays() { return {Displays{}}; }
    static CLIRequest displayEDID(std::string ref) { return {DisplayEDID{std::move(ref)}}; }
    static CLIRequest protectDisplay(std::string ref, bool isProtected) {
        return {ProtectDisplay{std::move(ref), isProtected}};
    }

    friend bool operator==(const CLIRequest&, const CLIRequest&) = default;
};

}  // namespace screenweaver
