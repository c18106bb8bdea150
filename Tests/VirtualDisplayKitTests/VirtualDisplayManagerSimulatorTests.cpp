// The manager with its real builder and probe, on the simulated window server.
#include <algorithm>
#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "SimulatedMachine.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/UnavailableVirtualDisplayManager.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"
#include "VirtualDisplayKit/VirtualDisplayManagerFactory.hpp"

namespace screenweaver {
namespace {

using namespace std::chrono_literals;
using simulation::CallFamily;

class ManagerOnSimulator : public testing::SimulatedMachine {
protected:
    VirtualDisplayManager makeManager() {
        return VirtualDisplayManager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
    }

    [[nodiscard]] std::size_t callsOf(std::string_view function) const {
        const auto calls = simulator.calls(CallFamily::coreGraphics);
        return static_cast<std::size_t>(std::ranges::count_if(
            calls, [&](const std::string& call) { return call.starts_with(function); }));
    }

    [[nodiscard]] bool anyVirtualDisplayAlive() const {
        return std::ranges::any_of(simulator.virtualDisplays(), &simulation::VirtualDisplayRecord::alive);
    }
};

TEST_F(ManagerOnSimulator, ASmoothCreationBuildsOnceAndObservesThreeTimes) {
    auto manager = makeManager();
    simulator.clearCalls();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle) << handle.error().description();
    EXPECT_EQ(*handle, (VirtualDisplayHandle{.spec = wideSpec(), .displayID = 4096, .acceptedPPI = 150.0}));
    EXPECT_EQ(simulator.descriptorAttempts(), 1U);
    EXPECT_EQ(callsOf("CGGetActiveDisplayList("), 6U);
    EXPECT_EQ(elapsed(), 0ns);
    EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1, 4096}));
    manager.release(*handle, {});
    EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1}));
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::info, "created virtual display 4096 at 5120x1440, 150 PPI accepted"),
                     entry(LogLevel::info, "released virtual display 4096")}));
}

TEST_F(ManagerOnSimulator, AHiDPIDisplayVerifiesAtItsPixelSizeThoughItsPointsAreHalf) {
    auto spec = wideSpec();
    spec.pixelWidth = 3840;
    spec.pixelHeight = 2160;
    spec.hiDPI = true;
    auto manager = makeManager();
    const auto handle = manager.create(spec, {});
    ASSERT_TRUE(handle) << handle.error().description();
    // The window server shows it as 1920x1080 points backed by 3840x2160 pixels; read in points it
    // would never verify and end, six seconds later, as a rejected configuration.
    const auto shown = simulator.display(handle->displayID);
    ASSERT_TRUE(shown && shown->currentMode);
    const simulation::SimulatedMode& mode = shown->modes[*shown->currentMode];
    EXPECT_EQ(mode.pixelWidth, 3840U);
    EXPECT_EQ(mode.pixelHeight, 2160U);
    EXPECT_EQ(mode.pointWidth, 1920U);
    EXPECT_EQ(mode.pointHeight, 1080U);
    EXPECT_EQ(elapsed(), 0ns);
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::info, "created virtual display 4096 at 3840x2160, 150 PPI accepted")}));
    manager.release(*handle, {});
    EXPECT_FALSE(anyVirtualDisplayAlive());
}

TEST_F(ManagerOnSimulator, AFirstRungRefusedAndASecondAcceptedYieldsTheSecondDensity) {
    simulator.setVirtualDisplayScript({.refuseDescriptorsAboveDensity = 130.0});
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(handle->acceptedPPI, 120.0);
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::defaultLevel, "descriptor refused at 150 PPI; dropping a rung"),
                     entry(LogLevel::info, "created virtual display 4096 at 5120x1440, 120 PPI accepted")}));
}

TEST_F(ManagerOnSimulator, EachRungIsBuiltInsideAnAutoreleasePoolOfItsOwn) {
    simulator.setVirtualDisplayScript({.refuseAttempts = {true}});
    auto manager = makeManager();
    simulator.clearCalls();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    std::vector<std::string> pools;
    for (const std::string& call : simulator.calls(CallFamily::objcRuntime)) {
        if (call.starts_with("objc_autoreleasePool")) {
            pools.push_back(call.substr(0, call.find('(')));
        }
    }
    EXPECT_EQ(pools, (std::vector<std::string>{"objc_autoreleasePoolPush", "objc_autoreleasePoolPop",
                                               "objc_autoreleasePoolPush", "objc_autoreleasePoolPop"}));
    manager.release(*handle, {});
}

TEST_F(ManagerOnSimulator, WithEveryRungRefusedTheLastRungsErrorIsThrownAfterOneLogPerRung) {
    simulator.setVirtualDisplayScript({.refuseEveryDescriptor = true});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(),
              VirtualDisplayError::creationFailed(
                  "the display interface refused a descriptor of 5120x1440 at 80 PPI"));
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::defaultLevel, "descriptor refused at 150 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 120 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 100 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 80 PPI; dropping a rung")}));
}

TEST_F(ManagerOnSimulator, RejectedSettingsOnEveryRungEndInARejectedConfigurationWithNothingLeft) {
    simulator.setVirtualDisplayScript({.rejectSettings = true});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::configurationRejected());
    EXPECT_EQ(simulator.virtualDisplays().size(), 4U);
    EXPECT_FALSE(anyVirtualDisplayAlive());
}

TEST_F(ManagerOnSimulator, ADisplayWithoutAnIDIsReleasedAndReported) {
    simulator.setVirtualDisplayScript({.answersZeroDisplayID = true});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(),
              VirtualDisplayError::creationFailed("the display interface assigned no display ID"));
    EXPECT_FALSE(anyVirtualDisplayAlive());
    EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1}));
}

TEST_F(ManagerOnSimulator, ADisplayAppearingAfter200msPassesPresenceAfterAFewPolls) {
    simulator.setVirtualDisplayScript({.appearanceDelay = 200ms});
    auto manager = makeManager();
    simulator.clearCalls();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(elapsed(), 200ms);
    // The first test, four polls, then one test each for mirroring and size.
    EXPECT_EQ(callsOf("CGGetActiveDisplayList(maxDisplays=64"), 7U);
    manager.release(*handle, {});
}

TEST_F(ManagerOnSimulator, ADisplayThatNeverAppearsIsNotActiveAfterSixSeconds) {
    simulator.setVirtualDisplayScript({.appearanceDelay = 7s});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::notActiveAfterCreation());
    EXPECT_EQ(elapsed(), 6s);
    EXPECT_EQ(logged(), (std::vector{entry(LogLevel::error, "virtual display 4096 never became active")}));
    EXPECT_FALSE(anyVirtualDisplayAlive());
    clock.sleepFor(2s, {});
    EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1}))
        << "the late display was withdrawn";
}

TEST_F(ManagerOnSimulator, AMirroredDisplayIsUnmirroredThroughASessionConfiguration) {
    simulator.setVirtualDisplayScript({.appearsMirrored = true});
    auto manager = makeManager();
    simulator.clearCalls();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(callsOf("CGConfigureDisplayMirrorOfDisplay(config=1, display=4096, master=0)"), 1U);
    EXPECT_EQ(simulator.display(4096)->mirrorSource, 0U);
    manager.release(*handle, {});
}

TEST_F(ManagerOnSimulator, AWrongSizeIsCorrectedByOneModeSwitch) {
    simulator.setVirtualDisplayScript(
        {.appearsAtPixelSize = std::pair<std::size_t, std::size_t>{1920, 1080}});
    auto manager = makeManager();
    simulator.clearCalls();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(callsOf("CGDisplaySetDisplayMode("), 1U);
    EXPECT_EQ(elapsed(), 0ns);
    manager.release(*handle, {});
}

TEST_F(ManagerOnSimulator, AWrongSizeOutlastingTwoModeSelectionsIsRejectedAndLeavesNoDisplay) {
    simulator.setVirtualDisplayScript(
        {.appearsAtPixelSize = std::pair<std::size_t, std::size_t>{5119, 1440}, .acceptsModeSwitch = false});
    auto manager = makeManager();
    simulator.clearCalls();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::configurationRejected());
    EXPECT_EQ(callsOf("CGDisplaySetDisplayMode("), 2U);
    EXPECT_GE(elapsed(), 6s);
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::error, "virtual display 4096 refused its requested mode")}));
    EXPECT_FALSE(simulator.display(4096));
}

TEST_F(ManagerOnSimulator, ReleasingOneHandleTwiceLogsOnce) {
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    manager.release(*handle, {});
    manager.release(*handle, {});
    const auto released =
        std::ranges::count(logged(), entry(LogLevel::info, "released virtual display 4096"));
    EXPECT_EQ(released, 1);
}

TEST_F(ManagerOnSimulator, ARetainedDisplayTheSystemNoLongerListsIsDroppedByTheOrphanSweep) {
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    simulator.removeDisplay(handle->displayID);
    EXPECT_EQ(manager.releaseOrphans({}), 1);
    EXPECT_FALSE(anyVirtualDisplayAlive());
    EXPECT_EQ(elapsed(), 0ns);
}

TEST_F(ManagerOnSimulator, TheFactoryHandsOutTheRealManagerWhenTheGateLetsDisplaysThrough) {
    const auto manager = VirtualDisplayManagerFactory::make(
        platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock);
    EXPECT_NE(dynamic_cast<VirtualDisplayManager*>(manager.get()), nullptr);
    EXPECT_TRUE(logged().empty());
}

TEST_F(ManagerOnSimulator, TheFactoryHandsOutAnUnavailableManagerAndLogsWhy) {
    simulator.removeClass("CGVirtualDisplayDescriptor");
    const auto manager = VirtualDisplayManagerFactory::make(
        platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock);
    const std::string reason =
        "This version of macOS does not expose the interface used to create virtual displays.";
    ASSERT_NE(dynamic_cast<UnavailableVirtualDisplayManager*>(manager.get()), nullptr);
    EXPECT_EQ(manager->availability(), VirtualDisplayAvailability::unavailable(reason));
    EXPECT_EQ(manager->create(wideSpec(), {}).error(), VirtualDisplayError::apiUnavailable(reason));
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::defaultLevel, "private class CGVirtualDisplayDescriptor is absent"),
                     entry(LogLevel::defaultLevel, "virtual displays unavailable: " + reason)}));
}

TEST_F(ManagerOnSimulator, TheFactoryGivesMacOS13AnUnavailableManagerFailingWithApiUnavailable) {
    simulator.setProcessFacts({.macOSMajorVersion = 13, .realUserID = 0});
    platform = simulator.platform();
    const auto manager = VirtualDisplayManagerFactory::make(
        platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock);
    EXPECT_EQ(manager->create(wideSpec(), {}).error(),
              VirtualDisplayError::apiUnavailable("Virtual displays need macOS 14 or later."));
}

/// The orphan wait runs on a thread of its own against a manual clock, so that the test can take a
/// display away in the middle of it.
class OrphanSweep : public ::testing::Test {
protected:
    OrphanSweep() {
        auto builtIn = simulation::makeDisplay(1, 2560, 1440);
        builtIn.main = true;
        simulator.addDisplay(builtIn);
    }

    void addOrphan(CGDirectDisplayID displayID) {
        auto orphan = simulation::makeDisplay(displayID, 1920, 1080);
        orphan.vendorNumber = 0x5357;
        simulator.addDisplay(orphan);
    }

    ScopedLogCapture capture;
    ManualClock clock;
    simulation::WindowServerSimulator simulator{clock};
    platform::PlatformAPI platform = simulator.platform();
    VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
};

TEST_F(OrphanSweep, ANeverUsedManagerFindsNothing) {
    EXPECT_EQ(manager.releaseOrphans({}), 0);
}

TEST_F(OrphanSweep, OneOfTwoTaggedDisplaysRetainedLeavesOneOrphanCountedWhenItVanishes) {
    const auto handle = manager.create(testing::SimulatedMachine::wideSpec(), {});
    ASSERT_TRUE(handle);
    addOrphan(30);
    auto sweep = std::async(std::launch::async, [&] { return manager.releaseOrphans({}); });
    clock.waitForSleepers(1);
    simulator.removeDisplay(30);
    clock.advance(50ms);
    EXPECT_EQ(sweep.get(), 1);
    const auto entries = capture.entries("virtualDisplay");
    EXPECT_EQ(
        std::ranges::count(entries, LogEntry{"org.screenweaver", "virtualDisplay", LogLevel::defaultLevel,
                                             "found 1 virtual display(s) without a live owner"}),
        1);
    EXPECT_TRUE(simulator.display(handle->displayID)) << "the retained display stays";
    manager.release(*handle, {});
}

TEST_F(OrphanSweep, AnOrphanOutlivingTheWaitIsReportedAndNotCounted) {
    addOrphan(30);
    auto sweep = std::async(std::launch::async, [&] { return manager.releaseOrphans({}); });
    for (int poll = 0; poll < 120; ++poll) {
        clock.waitForSleepers(1);
        clock.advance(50ms);
    }
    EXPECT_EQ(sweep.get(), 0);
    EXPECT_EQ(capture.entries("virtualDisplay").back(),
              (LogEntry{"org.screenweaver", "virtualDisplay", LogLevel::error,
                        "1 orphaned display(s) outlived the wait"}));
}

TEST_F(OrphanSweep, ACancelledWaitStillReportsWhatRemains) {
    addOrphan(30);
    StopSource stop;
    auto sweep = std::async(std::launch::async, [&] { return manager.releaseOrphans(stop.token()); });
    clock.waitForSleepers(1);
    stop.requestStop();
    EXPECT_EQ(sweep.get(), 0);
}

}  // namespace
}  // namespace screenweaver
