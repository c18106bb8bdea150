#include <gtest/gtest.h>

#include "CoreTypes/CapturingLogSink.hpp"
#include "DisplayKit/DisplaySleeper.hpp"

namespace screenweaver {
namespace {

struct RecordedRun {
    std::string path;
    std::vector<std::string> arguments;
    friend bool operator==(const RecordedRun&, const RecordedRun&) = default;
};

DisplaySleeper::Runner recording(std::vector<RecordedRun>& runs,
                                 std::expected<std::int32_t, ProgramLaunchError> result) {
    return [&runs, result](const std::string& path, const std::vector<std::string>& arguments) {
        runs.push_back({path, arguments});
        return result;
    };
}

TEST(DisplaySleeper, RunsThePowerToolOnceWithOneArgument) {
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{recording(runs, 0)};
    ASSERT_TRUE(sleeper.sleepDisplays().has_value());
    EXPECT_EQ(runs, (std::vector<RecordedRun>{{"/usr/bin/pmset", {"displaysleepnow"}}}));
}

TEST(DisplaySleeper, LogsOnceWhenTheToolSucceeds) {
    const ScopedLogCapture capture;
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{recording(runs, 0)};
    ASSERT_TRUE(sleeper.sleepDisplays().has_value());
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{
                  {"org.screenweaver", "display", LogLevel::defaultLevel, "displays asked to sleep"}}));
}

TEST(DisplaySleeper, ReportsANonZeroExitWithoutLogging) {
    const ScopedLogCapture capture;
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{recording(runs, 1)};
    EXPECT_EQ(sleeper.sleepDisplays().error(), DisplayError::displaySleepFailed("/usr/bin/pmset exited 1"));
    EXPECT_TRUE(capture.entries().empty());
}

TEST(DisplaySleeper, ReportsANegativeExitStatusInSignedDecimal) {
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{recording(runs, -3)};
    EXPECT_EQ(sleeper.sleepDisplays().error(), DisplayError::displaySleepFailed("/usr/bin/pmset exited -3"));
}

TEST(DisplaySleeper, ReportsARunnerThatCannotStartTheTool) {
    const ScopedLogCapture capture;
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{recording(runs, std::unexpected{ProgramLaunchError{"Operation not permitted"}})};
    EXPECT_EQ(sleeper.sleepDisplays().error(),
              DisplayError::displaySleepFailed("/usr/bin/pmset could not be run: Operation not permitted"));
    EXPECT_TRUE(capture.entries().empty());
    EXPECT_EQ(runs.size(), 1U);
}

TEST(DisplaySleeperProcess, FailsWithTheCauseWhenThePowerToolIsMissing) {
    // The built-in runner, pointed at a path where no program is: the real tool is never started,
    // so the displays of the machine running the tests stay awake.
    std::vector<RecordedRun> runs;
    DisplaySleeper sleeper{[&runs](const std::string& path, const std::vector<std::string>& arguments) {
        runs.push_back({path, arguments});
        return DisplaySleeper::spawn("/nonexistent/screenweaver/pmset", arguments);
    }};
    EXPECT_EQ(sleeper.sleepDisplays().error(),
              DisplayError::displaySleepFailed("/usr/bin/pmset could not be run: No such file or directory"));
    EXPECT_EQ(runs, (std::vector<RecordedRun>{{"/usr/bin/pmset", {"displaysleepnow"}}}));
}

TEST(DisplaySleeperProcess, SpawnsAProgramAndReturnsItsExitStatus) {
    EXPECT_EQ(DisplaySleeper::spawn("/bin/sh", {"-c", "exit 3"}), 3);
    EXPECT_EQ(DisplaySleeper::spawn("/bin/true", {}), 0);
}

TEST(DisplaySleeperProcess, SendsTheChildsOutputToTheNullDevice) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto status = DisplaySleeper::spawn("/bin/sh", {"-c", "echo out; echo err >&2; exit 0"});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(status, 0);
}

TEST(DisplaySleeperProcess, ReportsAProgramThatIsNotExecutable) {
    EXPECT_EQ(DisplaySleeper::spawn("/dev/null", {}).error(), ProgramLaunchError{"Permission denied"});
}

}  // namespace
}  // namespace screenweaver
