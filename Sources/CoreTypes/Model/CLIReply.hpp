#pragma once

#include <string>
#include <variant>
#include <vector>

#include "CoreTypes/Model/CLIDisplay.hpp"
#include "CoreTypes/Model/CLIDisplayEDID.hpp"
#include "CoreTypes/Model/CLIStatus.hpp"

namespace screenweaver {

/// The application's one reply to a request. Failures while carrying out a request come back as
/// `error` with the message to print.
struct CLIReply {
    /// `ok(_:)`: a confirmation for `activate`, `deactivate`, `capture` and `protectDisplay`.
    struct Ok {
        std::string message;
        friend bool operator==(const Ok&, const Ok&) = default;
    };
    /// `status(_:)`
    struct Status {
        CLIStatus status;
        friend bool operator==(const Status&, const Status&) = default;
    };
    /// `groups(_:)`: the group names in order.
    struct Groups {
        std::vector<std::string> names;
        friend bool operator==(const Groups&, const Groups&) = default;
    };
    /// `displays(_:)`
    struct Displays {
        std::vector<CLIDisplay> displays;
        friend bool operator==(const Displays&, const Displays&) = default;
    };
    /// `edid(_:)`
    struct Edid {
        CLIDisplayEDID edid;
        friend bool operator==(const Edid&, const Edid&) = default;
    };
    /// `error(_:)`: the message to print.
    struct Error {
        std::string message;
        friend bool operator==(const Error&, const Error&) = default;
    };

    std::variant<Ok, Status, Groups, Displays, Edid, Error> value;

    static CLIReply ok(std::string message) { return {Ok{std::move(message)}}; }
    static CLIReply status(CLIStatus payload) { return {Status{std::move(payload)}}; }
    static CLIReply groups(std::vector<std::string> names) { return {Groups{std::move(names)}}; }
    static CLIReply displays(std::vector<CLIDisplay> payload) { return {Displays{std::move(payload)}}; }
    static CLIReply edid(CLIDisplayEDID payload) { return {Edid{std::move(payload)}}; }
    static CLIReply error(std::string message) { return {Error{std::move(message)}}; }

    friend bool operator==(const CLIReply&, const CLIReply&) = default;
};

}  // namespace screenweaver
