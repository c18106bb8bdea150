#include "SimulatedService.hpp"

#include <unistd.h>

#include <array>
#include <fmt/format.h>
#include <utility>

#include "SelfAdvancingClock.hpp"
#include "screenweaverd/Daemon.hpp"

namespace screenweaver::simulation {
namespace {

struct ScenarioEntry {
    Scenario scenario;
    std::string_view name;
    std::string_view summary;
};

constexpr std::array<ScenarioEntry, 9> scenarioTable{{
    {Scenario::wellBehaved, "well-behaved", "the display appears at once, unmirrored, at its size (default)"},
    {Scenario::refusedFirstRung, "refused-first-rung",
     "the first density (150 PPI) is refused, 120 accepted"},
    {Scenario::lateDisplay, "late-display", "the display appears 200 ms after it was made"},
    {Scenario::mirroredDisplay, "mirrored-display", "the display comes up mirroring the built-in one"},
    {Scenario::wrongSize, "wrong-size", "the display comes up 5119x1440 and refuses every mode switch"},
    {Scenario::neverAppears, "never-appears", "the display never joins the active list"},
    {Scenario::displayLost, "display-lost", "the display list fails once the display has been verified"},
    {Scenario::noPrivateClasses, "no-private-classes", "the private virtual-display classes are absent"},
    {Scenario::macOS13, "macos-13", "the system reports macOS 13"},
}};

constexpr std::string_view privateClassNames[] = {"CGVirtualDisplayDescriptor", "CGVirtualDisplayMode",
                                                  "CGVirtualDisplaySettings", "CGVirtualDisplay"};

// The self-test lists the displays once before creating (a count call and a fill call) and the
// manager lists them once per verification (three); the listing after that is the one to fail.
constexpr int displayListCallsUntilVerified = 2 + 3 * 2;

}  // namespace

std::string_view scenarioName(Scenario scenario) {
    for (const ScenarioEntry& entry : scenarioTable) {
        if (entry.scenario == scenario) {
            return entry.name;
        }
    }
    return {};
}

std::optional<Scenario> scenarioNamed(std::string_view name) {
    for (const ScenarioEntry& entry : scenarioTable) {
        if (entry.name == name) {
            return entry.scenario;
        }
    }
    return std::nullopt;
}

void stage(WindowServerSimulator& simulator, Scenario scenario) {
    SimulatedDisplay builtIn = makeDisplay(1, 2560, 1440);
    builtIn.builtin = true;
    builtIn.main = true;
    builtIn.vendorNumber = 0x610;
    simulator.addDisplay(builtIn);
    simulator.setProcessFacts({.macOSMajorVersion = 15, .realUserID = getuid()});

    VirtualDisplayScript script;
    switch (scenario) {
        case Scenario::wellBehaved:
            break;
        case Scenario::refusedFirstRung:
            script.refuseAttempts = {true};
            break;
        case Scenario::lateDisplay:
            script.appearanceDelay = std::chrono::milliseconds{200};
            break;
        case Scenario::mirroredDisplay:
            script.appearsMirrored = true;
            break;
        case Scenario::wrongSize:
            script.appearsAtPixelSize = std::pair<std::size_t, std::size_t>{5119, 1440};
            script.acceptsModeSwitch = false;
            break;
        case Scenario::neverAppears:
            script.appearanceDelay = std::chrono::hours{24};
            break;
        case Scenario::displayLost:
            simulator.failCalls("CGGetActiveDisplayList", {.skip = displayListCallsUntilVerified});
            break;
        case Scenario::noPrivateClasses:
            for (const std::string_view name : privateClassNames) {
                simulator.removeClass(name);
            }
            break;
        case Scenario::macOS13:
            simulator.setProcessFacts({.macOSMajorVersion = 13, .realUserID = getuid()});
            break;
    }
    simulator.setVirtualDisplayScript(script);
}

std::string simulatedUsageText() {
    std::string text =
        "screenweaverd-simulated is a development build of the Screenweaver service. It runs the service's\n"
        "own code against a simulated window server (one built-in 2560x1440 display, ID 1), not against a\n"
        "real one, and its clock moves only when the service waits, so waits take no real time.\n"
        "\n"
        "Usage: screenweaverd-simulated [--scenario NAME] [service arguments, e.g. --self-test]\n"
        "       screenweaverd-simulated --simulator-help\n"
        "\n"
        "Scenarios:\n";
    for (const ScenarioEntry& entry : scenarioTable) {
        text += fmt::format("  {:<20}{}\n", entry.name, entry.summary);
    }
    text.pop_back();
    return text;
}

int runSimulatedService(std::span<const std::string> arguments, TextOutput& output, TextOutput& error,
                        std::function<void()> park) {
    Scenario scenario = Scenario::wellBehaved;
    if (!arguments.empty() && arguments.front() == "--simulator-help") {
        output.write(simulatedUsageText() + "\n");
        return 0;
    }
    if (!arguments.empty() && arguments.front() == "--scenario") {
        const std::optional<Scenario> named =
            arguments.size() > 1 ? scenarioNamed(arguments[1]) : std::nullopt;
        if (!named) {
            report(error, fmt::format("screenweaverd-simulated: unknown scenario '{}'",
                                      arguments.size() > 1 ? arguments[1] : std::string{}));
            report(error, simulatedUsageText());
            return 2;
        }
        scenario = *named;
        arguments = arguments.subspan(2);
    }
    const SelfAdvancingClock clock;
    WindowServerSimulator simulator{clock};
    stage(simulator, scenario);
    return runDaemon(arguments, DaemonContext{output, error, std::move(park), simulator.platform(), clock});
}

}  // namespace screenweaver::simulation
