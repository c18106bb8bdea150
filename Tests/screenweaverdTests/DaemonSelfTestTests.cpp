// The self-test in-process: on this machine (no macOS) and on the simulated window server.
#include <stdlib.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "CoreTypes/CapturingLogSink.hpp"
#include "SelfAdvancingClock.hpp"
#include "SimulatedService.hpp"
#include "screenweaverd/Daemon.hpp"
#include "screenweaverd/DaemonSelfTest.hpp"

namespace screenweaver {
namespace {

using Lines = std::vector<std::string>;
using simulation::Scenario;

const std::string doesNotExpose =
    "private interface unavailable: This version of macOS does not expose the interface used to create "
    "virtual "
    "displays.";

std::string uidLine(const std::string& displays) {
    return "uid " + std::to_string(getuid()) + ", displays before: " + displays;
}

class SelfTestOnSimulator : public ::testing::Test {
protected:
    void stage(Scenario scenario) { simulation::stage(simulator, scenario); }

    DaemonSelfTest::Report run() { return DaemonSelfTest::run(simulator.platform(), clock); }

    void TearDown() override {
        EXPECT_TRUE(simulator.hygieneProblems().empty());
        for (const auto& record : simulator.virtualDisplays()) {
            EXPECT_FALSE(record.alive) << "display " << record.displayID << " was left behind";
        }
    }

    ScopedLogCapture capture;
    simulation::SelfAdvancingClock clock;
    simulation::WindowServerSimulator simulator{clock};
};

TEST(DaemonSelfTest, AsksForTheFixedWideDisplay) {
    const VirtualDisplaySpec& spec = DaemonSelfTest::spec();
    EXPECT_EQ(spec, (VirtualDisplaySpec{.id = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
                                        .name = "Service self-test",
                                        .catalogEntryID = std::nullopt,
                                        .pixelWidth = 5120,
                                        .pixelHeight = 1440,
                                        .refreshRate = 60.0,
                                        .hiDPI = false,
                                        .rotation = 0,
                                        .dynamicRange = DynamicRange::standard,
                                        .targetPPIOverride = std::nullopt}));
    EXPECT_EQ(&DaemonSelfTest::spec(), &spec) << "built once";
}

TEST(DaemonSelfTest, OnAMachineWithoutADisplayServerReportsTheInterfaceUnavailable) {
    // No X display is named, and this is no Mac.
    const char* const display = std::getenv("DISPLAY");
    const std::optional<std::string> named =
        display != nullptr ? std::optional<std::string>{display} : std::nullopt;
    ::unsetenv("DISPLAY");
    const ScopedLogCapture capture;
    const auto report = DaemonSelfTest::run(platform::PlatformAPI::system(), ContinuousClock::shared());
    if (named) {
        ::setenv("DISPLAY", named->c_str(), 1);
    }
    EXPECT_EQ(report, (DaemonSelfTest::Report{.passed = false, .lines = {uidLine("[]"), doesNotExpose}}));
}

TEST_F(SelfTestOnSimulator, AWellBehavedMachinePassesInFiveLines) {
    stage(Scenario::wellBehaved);
    EXPECT_EQ(run(), (DaemonSelfTest::Report{.passed = true,
                                             .lines = {uidLine("[1]"), "created display 4096 at 150 PPI",
                                                       "machine reports: 5120x1440", "released", "PASS"}}));
}

TEST_F(SelfTestOnSimulator, ListsTheDisplaysBeforeAsACommaSeparatedList) {
    stage(Scenario::wellBehaved);
    simulator.addDisplay(simulation::makeDisplay(2, 1920, 1080));
    EXPECT_EQ(run().lines.at(0), uidLine("[1, 2]"));
}

TEST_F(SelfTestOnSimulator, ALowerAcceptedDensityIsReportedTruncated) {
    stage(Scenario::refusedFirstRung);
    EXPECT_EQ(run().lines.at(1), "created display 4096 at 120 PPI");
}

TEST_F(SelfTestOnSimulator, MacOS13IsReportedUnavailableAndNothingIsCreated) {
    stage(Scenario::macOS13);
    EXPECT_EQ(run(),
              (DaemonSelfTest::Report{
                  .passed = false,
                  .lines = {uidLine("[1]"),
                            "private interface unavailable: Virtual displays need macOS 14 or later."}}));
    EXPECT_TRUE(simulator.virtualDisplays().empty());
}

TEST_F(SelfTestOnSimulator, MissingPrivateClassesAreReportedUnavailable) {
    stage(Scenario::noPrivateClasses);
    EXPECT_EQ(run().lines, (Lines{uidLine("[1]"), doesNotExpose}));
}

TEST_F(SelfTestOnSimulator, AFailedCreationIsReportedWithTheErrorsDescription) {
    stage(Scenario::neverAppears);
    EXPECT_EQ(run(), (DaemonSelfTest::Report{.passed = false,
                                             .lines = {uidLine("[1]"), "FAIL: notActiveAfterCreation"}}));
}

TEST_F(SelfTestOnSimulator, ADisplayMissingAfterCreationFailsTheCheckAfterItsRelease) {
    stage(Scenario::displayLost);
    EXPECT_EQ(run(),
              (DaemonSelfTest::Report{
                  .passed = false,
                  .lines = {uidLine("[1]"), "created display 4096 at 150 PPI", "machine reports: absent",
                            "released", "FAIL: the display is not the size it was asked for"}}));
}

// The machine reports the new display one pixel smaller than it is, but only from the self-test's
// own second look (the fifth filled display list), after the manager has verified it.
namespace offByOne {
const platform::CoreGraphicsAPI* original = nullptr;
int filledLists = 0;
std::size_t widthShortfall = 0;
std::size_t heightShortfall = 0;

CGError activeDisplayList(uint32_t maxDisplays, CGDirectDisplayID* displays, uint32_t* count) {
    if (displays != nullptr) {
        ++filledLists;
    }
    return original->CGGetActiveDisplayList(maxDisplays, displays, count);
}
// The display whose current mode was copied last: the size reads that follow are its.
CGDirectDisplayID copiedFrom = 0;
CGDisplayModeRef copyDisplayMode(CGDirectDisplayID display) {
    copiedFrom = display;
    return original->CGDisplayCopyDisplayMode(display);
}
bool shortened() {
    return filledLists > 4 && copiedFrom != 1;
}
size_t pixelWidth(CGDisplayModeRef mode) {
    return original->CGDisplayModeGetPixelWidth(mode) - (shortened() ? widthShortfall : 0);
}
size_t pixelHeight(CGDisplayModeRef mode) {
    return original->CGDisplayModeGetPixelHeight(mode) - (shortened() ? heightShortfall : 0);
}
}  // namespace offByOne

TEST_F(SelfTestOnSimulator, AnObservedSizeOnePixelOffInEitherDimensionFailsButIsStillReleased) {
    stage(Scenario::wellBehaved);
    platform::PlatformAPI platform = simulator.platform();
    platform::CoreGraphicsAPI shortened = *platform.coreGraphics;
    offByOne::original = platform.coreGraphics;
    shortened.CGGetActiveDisplayList = &offByOne::activeDisplayList;
    shortened.CGDisplayCopyDisplayMode = &offByOne::copyDisplayMode;
    shortened.CGDisplayModeGetPixelWidth = &offByOne::pixelWidth;
    shortened.CGDisplayModeGetPixelHeight = &offByOne::pixelHeight;
    platform.coreGraphics = &shortened;
    for (const auto& [width, height, observed] :
         {std::tuple{1, 0, "machine reports: 5119x1440"}, std::tuple{0, 1, "machine reports: 5120x1439"}}) {
        offByOne::filledLists = 0;
        offByOne::widthShortfall = static_cast<std::size_t>(width);
        offByOne::heightShortfall = static_cast<std::size_t>(height);
        const auto report = DaemonSelfTest::run(platform, clock);
        EXPECT_FALSE(report.passed);
        ASSERT_EQ(report.lines.size(), 5U);
        EXPECT_EQ(report.lines[2], observed);
        EXPECT_EQ(report.lines[3], "released");
        EXPECT_EQ(report.lines[4], "FAIL: the display is not the size it was asked for");
    }
    EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1}));
}

TEST_F(SelfTestOnSimulator, TheEntryPrintsTheReportAndExitsWithItsVerdict) {
    stage(Scenario::wellBehaved);
    CapturedOutput output;
    CapturedOutput error;
    const int status = runDaemon(std::vector<std::string>{"--self-test", "--help"},
                                 DaemonContext{output, error, [] {}, simulator.platform(), clock});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(
        output.text(),
        uidLine("[1]") + "\ncreated display 4096 at 150 PPI\nmachine reports: 5120x1440\nreleased\nPASS\n");
    EXPECT_EQ(error.text(), "");
}

}  // namespace
}  // namespace screenweaver
