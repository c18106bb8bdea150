#pragma once

#include <functional>
#include <span>
#include <string>

#include "CoreTypes/Clock.hpp"
#include "Platform/PlatformAPI.hpp"
#include "screenweaverd/TextOutput.hpp"

namespace screenweaver {

/// What the service's entry is handed by `main`, or by a test running it in-process.
struct DaemonContext {
    /// Standard output: the help text and the self-test's report.
    TextOutput& output;
    /// Standard error: the service's own diagnostic lines.
    TextOutput& error;
    /// Hands the main thread to the main loop for good; `main` passes the real one, which never
    /// returns. A test's returns at once, and the entry then returns 0.
    std::function<void()> park;
    /// The window server the self-test works on: the system's, or a simulated one.
    platform::PlatformAPI platform = platform::PlatformAPI::system();
    /// What the self-test's waits are measured on.
    const Clock& clock = ContinuousClock::shared();
};

/// The help text, without a final line feed.
std::string daemonHelpText();

/// The service's entry: parses `arguments` (the process arguments without the program path) and
/// runs what they ask for. Returns the exit status: 0 for help (and a serve whose parking returned),
/// 1 for a failed check, 2 for an unknown argument.
int runDaemon(std::span<const std::string> arguments, const DaemonContext& context);

}  // namespace screenweaver
