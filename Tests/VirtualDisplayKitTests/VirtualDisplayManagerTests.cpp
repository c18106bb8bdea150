// The manager's logic against a scripted maker and probe. The manager with its real builder and
// probe is tested on the simulated window server in VirtualDisplayManagerSimulatorTests.
#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "CoreTypes/CapturingLogSink.hpp"
#include "ScriptedVirtualDisplays.hpp"
#include "SelfAdvancingClock.hpp"
#include "SimulatedMachine.hpp"
#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {
namespace {

using namespace std::chrono_literals;
using testing::ScriptedAttempt;
using testing::ScriptedVirtualDisplays;

// The self-test's display, shared with the tests on the simulated machine.
constexpr auto wideSpec = &testing::SimulatedMachine::wideSpec;

LogEntry entry(LogLevel level, std::string message) {
    return {"org.screenweaver", "virtualDisplay", level, std::move(message)};
}

struct ManagerFixture : ::testing::Test {
    VirtualDisplayManager makeManager(
        VirtualDisplayGateOutcome outcome = VirtualDisplayGateOutcome::usable(false)) {
        return VirtualDisplayManager{std::move(outcome), displays.maker(), displays.probe(), clock};
    }
    [[nodiscard]] std::vector<LogEntry> logged() const { return capture.entries("virtualDisplay"); }
    [[nodiscard]] Clock::Duration elapsed() const { return clock.now() - start; }

    ScopedLogCapture capture;
    simulation::SelfAdvancingClock clock;
    Clock::Instant start = clock.now();
    ScriptedVirtualDisplays displays{clock};
};

using VirtualDisplayManagerCreation = ManagerFixture;

TEST_F(VirtualDisplayManagerCreation, ABlockedGateFailsWithItsErrorBeforeLookingAtTheSpec) {
    const auto error = VirtualDisplayError::unsupportedOSVersion("Virtual displays need macOS 14 or later.");
    auto manager = makeManager(VirtualDisplayGateOutcome::blocked(error));
    auto spec = wideSpec();
    spec.pixelWidth = 0;
    EXPECT_EQ(manager.create(spec, {}).error(), error);
    EXPECT_EQ(manager.availability(),
              VirtualDisplayAvailability::unavailable("Virtual displays need macOS 14 or later."));
    EXPECT_TRUE(displays.recipes().empty());
}

TEST_F(VirtualDisplayManagerCreation, AnInvalidSpecFailsBeforeAnythingIsBuilt) {
    auto manager = makeManager();
    auto spec = wideSpec();
    spec.rotation = 360;
    EXPECT_EQ(manager.create(spec, {}).error(),
              VirtualDisplayError::invalidSpec("rotation must be 0, 90, 180 or 270 degrees"));
    EXPECT_TRUE(displays.recipes().empty());
}

TEST_F(VirtualDisplayManagerCreation, WithoutAMakerFailsWithTheInterfaceNotAvailable) {
    VirtualDisplayManager manager{VirtualDisplayGateOutcome::usable(false), nullptr, displays.probe(), clock};
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::available());
    EXPECT_EQ(manager.create(wideSpec(), {}).error(),
              VirtualDisplayError::apiUnavailable(
                  "The interface used to create virtual displays is not available."));
}

TEST_F(VirtualDisplayManagerCreation, ASmoothCreationCostsOneBuildAndThreeObservationsWithoutWaiting) {
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle) << handle.error().description();
    EXPECT_EQ(*handle, (VirtualDisplayHandle{.spec = wideSpec(), .displayID = 100, .acceptedPPI = 150.0}));
    EXPECT_EQ(displays.recipes().size(), 1U);
    EXPECT_EQ(displays.observations(), 3U);
    EXPECT_EQ(displays.breakMirroringCalls() + displays.selectModeCalls(), 0U);
    EXPECT_EQ(elapsed(), 0ns);
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::info, "created virtual display 100 at 5120x1440, 150 PPI accepted")}));
    EXPECT_EQ(displays.activeIDs(), (std::vector<std::uint32_t>{100}));
}

TEST_F(VirtualDisplayManagerCreation, ARefusedFirstRungIsDroppedAndTheSecondAccepted) {
    displays.script({{.refusal = VirtualDisplayError::creationFailed("refused")}});
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(handle->acceptedPPI, 120.0);
    EXPECT_EQ(displays.recipes().at(1).ppi, 120.0);
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::defaultLevel, "descriptor refused at 150 PPI; dropping a rung"),
                     entry(LogLevel::info, "created virtual display 100 at 5120x1440, 120 PPI accepted")}));
}

TEST_F(VirtualDisplayManagerCreation, WhenEveryRungIsRefusedTheLastRungsErrorIsThrown) {
    const auto refused = [](int ppi) {
        return ScriptedAttempt{.refusal = VirtualDisplayError::creationFailed(
                                   "the display interface refused a descriptor of 5120x1440 at " +
                                   std::to_string(ppi) + " PPI")};
    };
    displays.script({refused(150),
                     refused(120),
                     refused(100),
                     {.refusal = VirtualDisplayError::configurationRejected()}});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::configurationRejected());
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::defaultLevel, "descriptor refused at 150 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 120 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 100 PPI; dropping a rung"),
                           entry(LogLevel::defaultLevel, "descriptor refused at 80 PPI; dropping a rung")}));
}

TEST_F(VirtualDisplayManagerCreation, ATargetDensityIsTheFirstRungAndPrintsTruncated) {
    auto spec = wideSpec();
    spec.targetPPIOverride = 99.9;
    displays.script({{.refusal = VirtualDisplayError::creationFailed("refused")}});
    auto manager = makeManager();
    const auto handle = manager.create(spec, {});
    ASSERT_TRUE(handle);
    EXPECT_EQ(handle->acceptedPPI, 80.0);
    EXPECT_EQ(logged().at(0), entry(LogLevel::defaultLevel, "descriptor refused at 99 PPI; dropping a rung"));
}

TEST_F(VirtualDisplayManagerCreation, ADisplayWithoutAnIDIsDroppedAndReported) {
    displays.script({{.answersZeroDisplayID = true}});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(),
              VirtualDisplayError::creationFailed("the display interface assigned no display ID"));
    EXPECT_TRUE(displays.madeAndAlive().empty());
    EXPECT_EQ(displays.observations(), 0U);
}

TEST_F(VirtualDisplayManagerCreation, ADisplayAppearing200msLatePassesAfterAFewPolls) {
    displays.script({{.appearsAfter = 200ms}});
    auto manager = makeManager();
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    EXPECT_EQ(elapsed(), 200ms);
    // One test, four polls, then one test each for mirroring and size.
    EXPECT_EQ(displays.observations(), 1U + 4U + 2U);
}

TEST_F(VirtualDisplayManagerCreation, ADisplayThatNeverAppearsFailsAfterSixSecondsAndIsDropped) {
    displays.script({{.appearsAfter = std::nullopt}});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::notActiveAfterCreation());
    EXPECT_GE(elapsed(), 6s);
    EXPECT_LT(elapsed(), 6s + 50ms);
    // One test, 120 polls, and the final test.
    EXPECT_EQ(displays.observations(), 1U + 120U + 1U);
    EXPECT_EQ(logged(), (std::vector{entry(LogLevel::error, "virtual display 100 never became active")}));
    EXPECT_TRUE(displays.madeAndAlive().empty());
}

TEST_F(VirtualDisplayManagerCreation, AMirroredDisplayIsUnmirroredByOneCorrection) {
    displays.script({{.appearsMirrored = true}});
    auto manager = makeManager();
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    EXPECT_EQ(displays.breakMirroringCalls(), 1U);
    EXPECT_EQ(elapsed(), 0ns);
}

TEST_F(VirtualDisplayManagerCreation, ADisplayThatStaysMirroredCountsAsNotActive) {
    displays.script({{.appearsMirrored = true, .mirrorBreakable = false}});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::notActiveAfterCreation());
    EXPECT_EQ(displays.breakMirroringCalls(), 2U);
    EXPECT_EQ(logged(), (std::vector{entry(LogLevel::error, "virtual display 100 stayed mirrored")}));
    EXPECT_TRUE(displays.activeIDs().empty());
}

TEST_F(VirtualDisplayManagerCreation, AWrongSizeIsCorrectedByOneModeSelection) {
    displays.script({{.appearsAtPixelSize = std::pair<std::int64_t, std::int64_t>{1920, 1080}}});
    auto manager = makeManager();
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    EXPECT_EQ(displays.selectModeCalls(), 1U);
    EXPECT_EQ(elapsed(), 0ns);
}

TEST_F(VirtualDisplayManagerCreation, AWrongSizeThatOutlastsTwoModeSelectionsIsARejectedConfiguration) {
    displays.script({{.appearsAtPixelSize = std::pair<std::int64_t, std::int64_t>{5119, 1440},
                      .acceptsModeSwitch = false}});
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::configurationRejected());
    EXPECT_EQ(displays.selectModeCalls(), 2U);
    EXPECT_GE(elapsed(), 6s);
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::error, "virtual display 100 refused its requested mode")}));
    EXPECT_TRUE(displays.activeIDs().empty());
}

TEST_F(VirtualDisplayManagerCreation, CancellationEndsTheWaitEarlyAndTheFinalTestDecides) {
    displays.script({{.appearsAfter = 1s}});
    StopSource stop;
    displays.stopAfterObservations(stop, 3);
    auto manager = makeManager();
    EXPECT_EQ(manager.create(wideSpec(), stop.token()).error(),
              VirtualDisplayError::notActiveAfterCreation());
    EXPECT_LT(elapsed(), 1s);
    EXPECT_TRUE(displays.madeAndAlive().empty());
}

TEST_F(VirtualDisplayManagerCreation, ACancelledCreationStillSucceedsWhenTheFinalTestPasses) {
    displays.script({{.appearsAfter = 100ms}});
    StopSource stop;
    displays.stopAfterObservations(stop, 3);
    auto manager = makeManager();
    // The stop arrives at the third observation, the second poll (100 ms), which already sees it.
    ASSERT_TRUE(manager.create(wideSpec(), stop.token()));
}

TEST_F(VirtualDisplayManagerCreation, ASystemNewerThanTheKnownGoodRangeIsLoggedOnceAtCreation) {
    auto manager = makeManager(VirtualDisplayGateOutcome::usable(true));
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::available());
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::error,
                                 "macOS is newer than the newest release this interface was validated "
                                 "on; proceeding anyway")}));
}

TEST_F(VirtualDisplayManagerCreation, DroppingTheManagerDropsEveryRetainedDisplay) {
    {
        auto manager = makeManager();
        ASSERT_TRUE(manager.create(wideSpec(), {}));
        ASSERT_TRUE(manager.create(wideSpec(), {}));
        EXPECT_EQ(displays.madeAndAlive().size(), 2U);
    }
    EXPECT_TRUE(displays.madeAndAlive().empty());
}

using VirtualDisplayManagerRelease = ManagerFixture;

TEST_F(VirtualDisplayManagerRelease, ReleasingTwiceLogsOnce) {
    auto manager = makeManager();
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    manager.release(*handle, {});
    EXPECT_TRUE(displays.madeAndAlive().empty());
    manager.release(*handle, {});
    const auto entries = logged();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[1], entry(LogLevel::info, "released virtual display 100"));
}

TEST_F(VirtualDisplayManagerRelease, OrphansOfAManagerThatNeverCreatedAnythingAreNone) {
    auto manager = makeManager();
    EXPECT_EQ(manager.releaseOrphans({}), 0);
    EXPECT_TRUE(logged().empty());
}

TEST_F(VirtualDisplayManagerRelease, AnOrphanThatVanishesWithinTheWaitIsCounted) {
    auto manager = makeManager();
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    displays.addDisplay({.displayID = 7, .vendorNumber = 0x5357}, clock.now() + 300ms);
    displays.addDisplay({.displayID = 1, .vendorNumber = 0x610});
    EXPECT_EQ(manager.releaseOrphans({}), 1);
    EXPECT_EQ(elapsed(), 300ms);
    EXPECT_EQ(logged().back(),
              entry(LogLevel::defaultLevel, "found 1 virtual display(s) without a live owner"));
    EXPECT_EQ(displays.madeAndAlive(), (std::vector<std::uint32_t>{100})) << "the retained display is kept";
}

TEST_F(VirtualDisplayManagerRelease, AnOrphanThatOutlivesTheWaitIsReportedAndNotCounted) {
    auto manager = makeManager();
    displays.addDisplay({.displayID = 7, .vendorNumber = 0x5357});
    displays.addDisplay({.displayID = 8, .vendorNumber = 0x5357}, clock.now() + 1s);
    EXPECT_EQ(manager.releaseOrphans({}), 1);
    EXPECT_GE(elapsed(), 6s);
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::defaultLevel, "found 2 virtual display(s) without a live owner"),
                           entry(LogLevel::error, "1 orphaned display(s) outlived the wait")}));
}

TEST_F(VirtualDisplayManagerRelease, ACancelledOrphanWaitReportsTheOrphansStillThere) {
    auto manager = makeManager();
    displays.addDisplay({.displayID = 7, .vendorNumber = 0x5357});
    displays.addDisplay({.displayID = 8, .vendorNumber = 0x5357});
    displays.addDisplay({.displayID = 9, .vendorNumber = 0x5357}, clock.now() + 50ms);
    StopSource stop;
    // The first look finds the three orphans, the second (after one poll) stops the wait.
    displays.stopAfterObservations(stop, 2);
    EXPECT_EQ(manager.releaseOrphans(stop.token()), 1);
    EXPECT_EQ(elapsed(), 50ms);
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::defaultLevel, "found 3 virtual display(s) without a live owner"),
                           entry(LogLevel::error, "2 orphaned display(s) outlived the wait")}));
}

TEST_F(VirtualDisplayManagerRelease, ARetainedDisplayTheSystemNoLongerListsIsDroppedAndCounted) {
    auto manager = makeManager();
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    ASSERT_TRUE(manager.create(wideSpec(), {}));
    displays.vanish(100);
    EXPECT_EQ(manager.releaseOrphans({}), 1);
    EXPECT_EQ(elapsed(), 0ns);
    EXPECT_EQ(displays.madeAndAlive(), (std::vector<std::uint32_t>{101}));
}

TEST(VirtualDisplayManagerActor, AReleaseProceedsWhileACreationSleeps) {
    ManualClock clock;
    ScriptedVirtualDisplays displays{clock};
    displays.script({{}, {.appearsAfter = 1s}});
    VirtualDisplayManager manager{VirtualDisplayGateOutcome::usable(false), displays.maker(),
                                  displays.probe(), clock};
    const auto first = manager.create(wideSpec(), {});
    ASSERT_TRUE(first);
    auto second = std::async(std::launch::async, [&] { return manager.create(wideSpec(), {}); });
    clock.waitForSleepers(1);
    // The creation sleeps with the manager's lock released, so this does not wait for it.
    manager.release(*first, {});
    EXPECT_EQ(displays.madeAndAlive(), (std::vector<std::uint32_t>{101}));
    while (second.wait_for(0s) != std::future_status::ready) {
        clock.advanceTo(clock.nextDeadline());
        std::this_thread::yield();
    }
    const auto created = second.get();
    ASSERT_TRUE(created);
    EXPECT_EQ(created->displayID, 101U);
}

}  // namespace
}  // namespace screenweaver
