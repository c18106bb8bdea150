#pragma once

#include <span>
#include <string>
#include <variant>

namespace screenweaver {

/// What the service was asked to do, from its first argument.
struct DaemonInvocation {
    /// No argument: run as the launchd service.
    struct Serve {
        friend bool operator==(const Serve&, const Serve&) = default;
    };
    /// "--self-test": create a display, verify it, release it, report.
    struct SelfTest {
        friend bool operator==(const SelfTest&, const SelfTest&) = default;
    };
    /// "--help" or "-h".
    struct Help {
        friend bool operator==(const Help&, const Help&) = default;
    };
    /// Any other first argument, kept as given.
    struct Unknown {
        std::string argument;
        friend bool operator==(const Unknown&, const Unknown&) = default;
    };

    std::variant<Serve, SelfTest, Help, Unknown> value;

    static DaemonInvocation serve() { return {Serve{}}; }
    static DaemonInvocation selfTest() { return {SelfTest{}}; }
    static DaemonInvocation help() { return {Help{}}; }
    static DaemonInvocation unknown(std::string argument) { return {Unknown{std::move(argument)}}; }

    friend bool operator==(const DaemonInvocation&, const DaemonInvocation&) = default;
};

namespace DaemonArguments {

/// Parses the process arguments without the program path. Only the first argument counts; later
/// ones are ignored. Comparison is exact and case-sensitive.
DaemonInvocation parse(std::span<const std::string> arguments);

}  // namespace DaemonArguments

}  // namespace screenweaver
