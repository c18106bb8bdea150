#include <unistd.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "CoreTypes/CapturingLogSink.hpp"
#include "screenweaverd/Daemon.hpp"

namespace screenweaver {
namespace {

const std::string helpText =
    "The Screenweaver privileged service.\n\nStarted by launchd; there is nothing to run by hand except the "
    "check.\n\n  --self-test   create a display, verify it, release it, and report\n  --help        print "
    "this "
    "text\n\nExit codes: 0 success, 1 the check failed, 2 unknown argument.";

struct EntryRun {
    int status = -1;
    std::string output;
    std::string error;
    int parks = 0;
};

EntryRun runEntry(std::vector<std::string> arguments) {
    EntryRun run;
    CapturedOutput output;
    CapturedOutput error;
    run.status = runDaemon(arguments, {output, error, [&run] { ++run.parks; }});
    run.output = output.text();
    run.error = error.text();
    return run;
}

TEST(DaemonEntry, HelpTextIsExact) {
    EXPECT_EQ(daemonHelpText(), helpText);
}

TEST(DaemonEntry, HelpPrintsTheTextAndOneLineFeedToStandardOutput) {
    for (const char* flag : {"--help", "-h"}) {
        const EntryRun run = runEntry({flag});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output, helpText + "\n");
        EXPECT_EQ(run.error, "");
        EXPECT_EQ(run.parks, 0);
    }
}

TEST(DaemonEntry, UnknownArgumentReportsItAndTheHelpTextOnStandardError) {
    const EntryRun run = runEntry({"--foo"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "Screenweaver: unknown argument '--foo'\n" + helpText + "\n");
}

TEST(DaemonEntry, AnEmptyArgumentIsEchoedAsTwoApostrophes) {
    const EntryRun run = runEntry({""});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "Screenweaver: unknown argument ''\n" + helpText + "\n");
}

TEST(DaemonEntry, ServeLogsItsStartReportsOneLineAndParks) {
    const ScopedLogCapture capture;
    const EntryRun run = runEntry({});
    EXPECT_EQ(run.parks, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "Screenweaver service: started, nothing to serve yet\n");
    const std::vector<LogEntry> expected{{"org.screenweaver", "app", LogLevel::defaultLevel,
                                          "service starting as uid " + std::to_string(getuid())}};
    EXPECT_EQ(capture.entries(), expected);
}

TEST(DaemonEntry, TheFirstArgumentWinsSoSelfTestRunsBeforeHelp) {
    const ScopedLogCapture capture;
    const EntryRun run = runEntry({"--self-test", "--help"});
    // Without macOS there is no interface to make displays with, so the check cannot pass here.
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output,
              "uid " + std::to_string(getuid()) +
                  ", displays before: []\nprivate interface unavailable: This version of macOS does not "
                  "expose the interface used to create virtual displays.\n");
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.parks, 0);
}

}  // namespace
}  // namespace screenweaver
