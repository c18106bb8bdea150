// Runs the built service as a process and compares its exact output bytes and exit status.
#include <signal.h>

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ChildProcess.hpp"

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

Outcome run(const std::vector<std::string>& arguments) {
    ChildProcess child{SCREENWEAVERD_PATH, arguments};
    const int status = child.wait();
    return {status, child.output(), child.error()};
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
    std::this_thread::sleep_for(std::chrono::seconds{2});
    child.drain();
    EXPECT_TRUE(child.isRunning());
    EXPECT_LT(child.cpuTime(), std::chrono::milliseconds{20});
    EXPECT_EQ(child.error(), "Screenweaver service: started, nothing to serve yet\n");
    EXPECT_EQ(child.output(), "");
    child.stop(SIGTERM);
}

}  // namespace
}  // namespace screenweaver
