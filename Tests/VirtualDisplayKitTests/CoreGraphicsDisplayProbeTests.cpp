#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "SimulatedMachine.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"

namespace screenweaver {
namespace {

using LiveDisplayProbe = testing::SimulatedMachine;
using simulation::CallFamily;

TEST_F(LiveDisplayProbe, AHeadlessMachineHasNoActiveDisplays) {
    simulator.removeDisplay(1);
    CoreGraphicsDisplayProbe probe{platform};
    EXPECT_TRUE(probe.activeDisplays().empty());
}

TEST_F(LiveDisplayProbe, ASystemWithoutCoreGraphicsHasNoDisplaysAndCorrectsNothing) {
    CoreGraphicsDisplayProbe probe{platform::PlatformAPI{}};
    EXPECT_TRUE(probe.activeDisplays().empty());
    EXPECT_FALSE(probe.breakMirroring(1));
    EXPECT_FALSE(probe.selectMode(1, 2560, 1440));
}

TEST_F(LiveDisplayProbe, ListsEveryActiveDisplayInTheWindowServersOrder) {
    auto second = simulation::makeDisplay(2, 1920, 1080);
    second.vendorNumber = 0x5357;
    second.serialNumber = 77;
    second.mirrorSource = 1;
    simulator.addDisplay(second);
    CoreGraphicsDisplayProbe probe{platform};
    EXPECT_EQ(probe.activeDisplays(), (std::vector<LiveDisplaySnapshot>{{.displayID = 1,
                                                                         .vendorNumber = 0x610,
                                                                         .serialNumber = 0,
                                                                         .mirrorSource = std::nullopt,
                                                                         .pixelWidth = 2560,
                                                                         .pixelHeight = 1440},
                                                                        {.displayID = 2,
                                                                         .vendorNumber = 0x5357,
                                                                         .serialNumber = 77,
                                                                         .mirrorSource = 1,
                                                                         .pixelWidth = 1920,
                                                                         .pixelHeight = 1080}}));
}

TEST_F(LiveDisplayProbe, ReadsAHiDPIDisplaysPixelsFromItsCurrentModeNotItsPoints) {
    simulation::SimulatedDisplay display;
    display.displayID = 2;
    display.modes = {{3840, 2160, 1920, 1080, 60.0, false}, {1920, 1080, 1920, 1080, 60.0, true}};
    display.currentMode = 0;
    simulator.addDisplay(display);
    CoreGraphicsDisplayProbe probe{platform};
    const auto displays = probe.activeDisplays();
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[1].pixelWidth, 3840);
    EXPECT_EQ(displays[1].pixelHeight, 2160);
}

TEST_F(LiveDisplayProbe, ReadsEachDisplaysCurrentModeAndReleasesItAtOnce) {
    CoreGraphicsDisplayProbe probe{platform};
    simulator.clearCalls();
    ASSERT_EQ(probe.activeDisplays().size(), 1U);
    const auto calls = simulator.calls(CallFamily::coreGraphics);
    const auto copy = std::ranges::find(calls, "CGDisplayCopyDisplayMode(display=1)");
    ASSERT_LE(copy + 4, calls.end());
    const std::vector<std::string> modeCalls(copy, copy + 4);
    EXPECT_EQ(modeCalls, (std::vector<std::string>{
                             "CGDisplayCopyDisplayMode(display=1)",
                             "CGDisplayModeGetPixelWidth(mode=2560x1440/2560x1440@60.0)",
                             "CGDisplayModeGetPixelHeight(mode=2560x1440/2560x1440@60.0)",
                             "CGDisplayModeRelease(mode=2560x1440/2560x1440@60.0)",
                         }));
    EXPECT_EQ(std::ranges::count_if(calls,
                                    [](const std::string& call) {
                                        return call.starts_with("CGDisplayPixelsWide") ||
                                               call.starts_with("CGDisplayPixelsHigh");
                                    }),
              0);
}

TEST_F(LiveDisplayProbe, ListsADisplayWithoutACurrentModeAtNoSize) {
    simulator.editDisplayQuietly(1,
                                 [](simulation::SimulatedDisplay& display) { display.currentMode.reset(); });
    CoreGraphicsDisplayProbe probe{platform};
    const auto displays = probe.activeDisplays();
    ASSERT_EQ(displays.size(), 1U);
    EXPECT_EQ(displays[0].pixelWidth, 0);
    EXPECT_EQ(displays[0].pixelHeight, 0);
}

TEST_F(LiveDisplayProbe, ADisplayThatMirrorsNoneHasAnAbsentMirrorSourceNeverZero) {
    CoreGraphicsDisplayProbe probe{platform};
    const auto displays = probe.activeDisplays();
    ASSERT_EQ(displays.size(), 1U);
    EXPECT_EQ(displays[0].mirrorSource, std::nullopt);
}

TEST_F(LiveDisplayProbe, AsksForAtMost64DisplaysOnTheFirstCountCall) {
    CoreGraphicsDisplayProbe probe{platform};
    simulator.clearCalls();
    ASSERT_EQ(probe.activeDisplays().size(), 1U);
    const auto calls = simulator.calls(CallFamily::coreGraphics);
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[0], "CGGetActiveDisplayList(maxDisplays=64, activeDisplays=NULL)");
    EXPECT_EQ(calls[1], "CGGetActiveDisplayList(maxDisplays=1, activeDisplays=buffer)");
}

TEST_F(LiveDisplayProbe, AFailingCountOrFillGivesAnEmptyList) {
    CoreGraphicsDisplayProbe probe{platform};
    simulator.failCalls("CGGetActiveDisplayList", {.count = 1});
    EXPECT_TRUE(probe.activeDisplays().empty());
    simulator.failCalls("CGGetActiveDisplayList", {.skip = 1, .count = 1});
    EXPECT_TRUE(probe.activeDisplays().empty());
    EXPECT_EQ(probe.activeDisplays().size(), 1U);
}

TEST_F(LiveDisplayProbe, BreakingMirroringCompletesAConfigurationForTheSession) {
    simulator.addDisplay(simulation::makeDisplay(2, 1920, 1080));
    simulator.setMirrorSource(2, 1);
    CoreGraphicsDisplayProbe probe{platform};
    simulator.clearCalls();
    EXPECT_TRUE(probe.breakMirroring(2));
    EXPECT_EQ(simulator.calls(CallFamily::coreGraphics),
              (std::vector<std::string>{
                  "CGBeginDisplayConfiguration()",
                  "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
                  "CGCompleteDisplayConfiguration(config=1, option=kCGConfigureForSession)"}));
    EXPECT_EQ(simulator.display(2)->mirrorSource, 0U);
}

TEST_F(LiveDisplayProbe, BreakingMirroringOfAnUnmirroredDisplayStillRunsAConfiguration) {
    CoreGraphicsDisplayProbe probe{platform};
    simulator.clearCalls();
    EXPECT_TRUE(probe.breakMirroring(1));
    EXPECT_EQ(simulator.calls(CallFamily::coreGraphics).size(), 3U);
}

TEST_F(LiveDisplayProbe, AFailedMirrorStepIsCancelledAndReportsFalse) {
    CoreGraphicsDisplayProbe probe{platform};
    simulator.failCalls("CGConfigureDisplayMirrorOfDisplay");
    simulator.clearCalls();
    EXPECT_FALSE(probe.breakMirroring(1));
    EXPECT_EQ(simulator.calls(CallFamily::coreGraphics).back(), "CGCancelDisplayConfiguration(config=1)");
    simulator.failCalls("CGBeginDisplayConfiguration");
    EXPECT_FALSE(probe.breakMirroring(1));
}

TEST_F(LiveDisplayProbe, SelectingASizeListedTwiceAppliesTheFirstListed) {
    auto display = simulation::makeDisplay(2, 1920, 1080);
    display.modes.push_back({2560, 1440, 2560, 1440, 60.0, false});
    display.modes.push_back({2560, 1440, 2560, 1440, 30.0, false});
    simulator.addDisplay(display);
    CoreGraphicsDisplayProbe probe{platform};
    EXPECT_TRUE(probe.selectMode(2, 2560, 1440));
    EXPECT_EQ(simulator.display(2)->currentMode, 1U);
}

TEST_F(LiveDisplayProbe, SelectingAnUnlistedSizeOrWithoutAModeListFails) {
    CoreGraphicsDisplayProbe probe{platform};
    EXPECT_FALSE(probe.selectMode(1, 1920, 1080));
    EXPECT_FALSE(probe.selectMode(1, -2560, 1440));
    simulator.failCalls("CGDisplayCopyAllDisplayModes");
    EXPECT_FALSE(probe.selectMode(1, 2560, 1440));
    simulator.clearFailures();
    simulator.failCalls("CGDisplaySetDisplayMode");
    EXPECT_FALSE(probe.selectMode(1, 2560, 1440));
}

}  // namespace
}  // namespace screenweaver
