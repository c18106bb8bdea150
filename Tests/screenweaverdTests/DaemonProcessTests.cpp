// Runs the built service as a process and compares its exact output bytes and exit status.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ChildProcess/ChildProcess.hpp"

namespace screenweaver {
namespace {

using screenweaver::testing::ChildProcess;

const std::string helpText =
    "The Screenweaver privileged service.\n\nStarted by launchd; there is nothing to run by hand except the "
    "check.\n\n  --self-test   create a display, verify it, release it, and report\n  --help        print "
    "this "
    "text\n\nExit codes: 0 success, 1 the check failed, 2 unknown argument.";

struct Outcome {
    int status;
    std::string output;
    std::string error;
};

// Without a display server: no X display is named, and this is no Mac.
Outcome run(const std::vector<std::string>& arguments, const char* path = SCREENWEAVERD_PATH) {
    ChildProcess child{path, arguments, ChildProcess::environmentWithout("DISPLAY")};
    const int status = child.wait();
    return {status, child.output(), child.error()};
}

Outcome runSimulated(const std::vector<std::string>& arguments) {
    return run(arguments, SCREENWEAVERD_SIMULATED_PATH);
}

const std::string doesNotExpose =
    "private interface unavailable: This version of macOS does not expose the interface used to create "
    "virtual "
    "displays.\n";

std::string uidLine(const std::string& displays) {
    return "uid " + std::to_string(getuid()) + ", displays before: " + displays + "\n";
}

TEST(ServiceProcess, PrintsHelpToStandardOutputForBothHelpFlags) {
    for (const char* flag : {"--help", "-h"}) {
        const Outcome outcome = run({flag});
        EXPECT_EQ(outcome.status, 0) << flag;
        EXPECT_EQ(outcome.output, helpText + "\n") << flag;
        EXPECT_EQ(outcome.error, "") << flag;
    }
}

TEST(ServiceProcess, PrintsHelpWhenHelpComesBeforeSelfTest) {
    const Outcome outcome = run({"--help", "--self-test"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, helpText + "\n");
    EXPECT_EQ(outcome.error, "");
}

TEST(ServiceProcess, RejectsUnknownArgumentsWithStatusTwoAndHelpOnStandardError) {
    for (const std::string argument : {"-help", "--HELP", "--foo", ""}) {
        const Outcome outcome = run({argument});
        EXPECT_EQ(outcome.status, 2) << argument;
        EXPECT_EQ(outcome.output, "") << argument;
        EXPECT_EQ(outcome.error, "Screenweaver: unknown argument '" + argument + "'\n" + helpText + "\n")
            << argument;
    }
}

TEST(ServiceProcess, ServesByReportingOneLineAndParkingWithoutSpinning) {
    ChildProcess child{SCREENWEAVERD_PATH, {}};
    child.waitForErrorLine();
    ASSERT_EQ(child.error(), "Screenweaver service: started, nothing to serve yet\n");
    // The line is the entry's last act before it parks; once its thread is asleep it is parked.
    while (child.isRunning() && child.mainThreadActivity().state != 'S') {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    // Start-up costs what the machine and the sanitizer make it cost; parking must cost nothing.
    // Only the main thread is watched: it is the service's one thread, and sanitizer runtimes keep
    // helper threads of their own. Its counters move only when it runs, so no tolerance is needed.
    const ChildProcess::ThreadActivity parked = child.mainThreadActivity();
    std::this_thread::sleep_for(std::chrono::seconds{1});
    const ChildProcess::ThreadActivity later = child.mainThreadActivity();
    EXPECT_EQ(later.processorTime - parked.processorTime, std::chrono::nanoseconds::zero());
    EXPECT_EQ(later.voluntarySwitches - parked.voluntarySwitches, 0);
    EXPECT_TRUE(child.isRunning());
    child.drain();
    EXPECT_EQ(child.error(), "Screenweaver service: started, nothing to serve yet\n");
    EXPECT_EQ(child.output(), "");
    child.stop(SIGTERM);
}

TEST(ServiceProcess, SelfTestOnThisMachineReportsTheInterfaceUnavailableAndFails) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--self-test"}, std::vector<std::string>{"--self-test", "--help"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, uidLine("[]") + doesNotExpose);
        EXPECT_EQ(outcome.error, "");
    }
}

TEST(SimulatedServiceProcess, SelfTestPassesInFiveLines) {
    const Outcome outcome = runSimulated({"--self-test"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.output,
        uidLine("[1]") + "created display 4096 at 150 PPI\nmachine reports: 5120x1440\nreleased\nPASS\n");
    EXPECT_EQ(outcome.error, "");
}

TEST(SimulatedServiceProcess, EveryScenarioPrintsItsLinesAndExitStatus) {
    const std::string created = "created display 4096 at 150 PPI\n";
    const std::string pass = created + "machine reports: 5120x1440\nreleased\nPASS\n";
    const struct {
        const char* scenario;
        int status;
        std::string lines;
    } expectations[] = {
        {"well-behaved", 0, pass},
        {"refused-first-rung", 0,
         "created display 4096 at 120 PPI\nmachine reports: 5120x1440\nreleased\nPASS\n"},
        {"late-display", 0, pass},
        {"mirrored-display", 0, pass},
        {"wrong-size", 1, "FAIL: configurationRejected\n"},
        {"never-appears", 1, "FAIL: notActiveAfterCreation\n"},
        {"display-lost", 1,
         created + "machine reports: absent\nreleased\nFAIL: the display is not the size it was asked for\n"},
        {"no-private-classes", 1, doesNotExpose},
        {"macos-13", 1, "private interface unavailable: Virtual displays need macOS 14 or later.\n"},
    };
    for (const auto& expected : expectations) {
        const Outcome outcome = runSimulated({"--scenario", expected.scenario, "--self-test"});
        EXPECT_EQ(outcome.status, expected.status) << expected.scenario;
        EXPECT_EQ(outcome.output, uidLine("[1]") + expected.lines) << expected.scenario;
        EXPECT_EQ(outcome.error, "") << expected.scenario;
    }
}

TEST(SimulatedServiceProcess, UsageTextSaysItIsADevelopmentBuild) {
    const Outcome outcome = runSimulated({"--simulator-help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(
        outcome.output.starts_with("screenweaverd-simulated is a development build of the Screenweaver "
                                   "service."))
        << outcome.output;
    EXPECT_NE(outcome.output.find("  late-display        the display appears 200 ms after it was made\n"),
              std::string::npos);
}

TEST(SimulatedServiceProcess, AnUnknownScenarioIsRefusedWithStatusTwo) {
    const Outcome outcome = runSimulated({"--scenario", "sunny", "--self-test"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(outcome.error.starts_with("screenweaverd-simulated: unknown scenario 'sunny'\n"));
}

TEST(SimulatedServiceProcess, ServiceArgumentsPassThrough) {
    const Outcome outcome = runSimulated({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, helpText + "\n");
}

}  // namespace
}  // namespace screenweaver
