#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "WindowServerSimulator/WindowServerSimulator.hpp"
#include "screenweaverd/TextOutput.hpp"

// The service's own entry run against the simulated window server, so that the whole road of the
// self-test can be run and watched on a machine without macOS. A development build only.
namespace screenweaver::simulation {

/// How the simulated window server behaves for one run.
enum class Scenario {
    wellBehaved,
    refusedFirstRung,
    lateDisplay,
    mirroredDisplay,
    wrongSize,
    neverAppears,
    displayLost,
    noPrivateClasses,
    macOS13,
};

/// The scenario's name on the command line, e.g. "refused-first-rung".
[[nodiscard]] std::string_view scenarioName(Scenario scenario);
[[nodiscard]] std::optional<Scenario> scenarioNamed(std::string_view name);

/// Gives `simulator` the machine every run starts from (one built-in 2560x1440 display, ID 1, the
/// main one) and the scenario's behaviour.
void stage(WindowServerSimulator& simulator, Scenario scenario);

/// The usage text of the development build, without a final line feed.
[[nodiscard]] std::string simulatedUsageText();

/// Reads the simulator's own options (`--scenario NAME`, `--simulator-help`) from the front of
/// `arguments` and runs the service's entry with the rest, on a simulated window server whose
/// clock moves only when the service waits. Returns the exit status.
int runSimulatedService(std::span<const std::string> arguments, TextOutput& output, TextOutput& error,
                        std::function<void()> park);

}  // namespace screenweaver::simulation
