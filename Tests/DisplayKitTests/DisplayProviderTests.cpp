#include <gtest/gtest.h>

#include "CoreTypes/CapturingLogSink.hpp"
#include "DisplayKitTests/SimulatedDisplaysTest.hpp"

namespace screenweaver {
namespace {

using simulation::CallFamily;
using simulation::Failure;
using simulation::ModeListAnswer;
using simulation::SimulatedMode;

class DisplayProviderTest : public SimulatedDisplaysTest {};

TEST_F(DisplayProviderTest, SnapshotsNoDisplaysWithASingleEnumerationCall) {
    EXPECT_EQ(provider().snapshot(), DisplayTopology{});
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}),
              std::vector<std::string>{"CGGetActiveDisplayList(maxDisplays=0, activeDisplays=NULL)"});
}

TEST_F(DisplayProviderTest, SnapshotsEveryFieldOfEveryDisplayInEnumerationOrder) {
    auto builtin = simulation::makeDisplay(4, 3024, 1964);
    builtin.modes = {SimulatedMode{3024, 1964, 1512, 982, 120.0, false}};
    builtin.vendorNumber = 1552;
    builtin.modelNumber = 41050;
    builtin.serialNumber = 7;
    builtin.builtin = true;
    builtin.colorSyncUUID = "37d8832a-2d66-02ca-b9f7-8f30a301b230";
    simulator.addDisplay(builtin);
    auto external = simulation::makeDisplay(9, 2560, 1440, 59.94);
    external.origin = {1512, 0};
    external.asleep = true;
    external.colorSyncUUID = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";
    simulator.addDisplay(external);

    LiveDisplay first;
    first.displayID = 4;
    first.ref = DisplayRef::physical("37D8832A-2D66-02CA-B9F7-8F30A301B230");
    first.vendorNumber = 1552;
    first.modelNumber = 41050;
    first.serialNumber = 7;
    first.isBuiltin = true;
    first.isMain = true;
    first.bounds = {{0, 0}, {1512, 982}};
    first.currentMode = DisplayModeInfo{3024, 1964, 1512, 982, 120.0};
    LiveDisplay second;
    second.displayID = 9;
    second.ref = DisplayRef::physical("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    second.isAsleep = true;
    second.bounds = {{1512, 0}, {2560, 1440}};
    second.currentMode = DisplayModeInfo{2560, 1440, 2560, 1440, 59.94};
    EXPECT_EQ(provider().snapshot(), (DisplayTopology{{first, second}}));
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}),
              (std::vector<std::string>{"CGGetActiveDisplayList(maxDisplays=0, activeDisplays=NULL)",
                                        "CGGetActiveDisplayList(maxDisplays=2, activeDisplays=buffer)"}));
}

TEST_F(DisplayProviderTest, SnapshotsMoreDisplaysThanAnyFixedLimit) {
    for (CGDirectDisplayID id = 1; id <= 40; ++id) {
        simulator.addDisplay(display(id, 100, 100, {static_cast<double>(id - 1) * 100, 0}));
    }
    const auto topology = provider().snapshot();
    ASSERT_TRUE(topology.has_value());
    ASSERT_EQ(topology->displays.size(), 40U);
    EXPECT_EQ(topology->displays.back().displayID, 40U);
}

TEST_F(DisplayProviderTest, ListsADisplayWhoseModeCannotBeReadWithoutACurrentMode) {
    auto headless = display(3, 1920, 1080, {0, 0});
    headless.vendorNumber = 1;
    headless.modelNumber = 2;
    headless.serialNumber = 3;
    headless.currentMode = std::nullopt;
    simulator.addDisplay(headless);

    LiveDisplay expected;
    expected.displayID = 3;
    expected.ref = DisplayRef::physical("00000000-0000-0000-0000-000000000003");
    expected.vendorNumber = 1;
    expected.modelNumber = 2;
    expected.serialNumber = 3;
    expected.isMain = true;
    expected.bounds = {{0, 0}, {0, 0}};
    EXPECT_EQ(provider().snapshot(), DisplayTopology{{expected}});
}

TEST_F(DisplayProviderTest, ReleasesTheCopiedCurrentMode) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    ASSERT_TRUE(provider().snapshot().has_value());
    // The hygiene check at tear-down finds any mode left alive.
}

TEST_F(DisplayProviderTest, FailsTheSnapshotWhenCountingFails) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    simulator.failCalls("CGGetActiveDisplayList");
    EXPECT_EQ(provider().snapshot().error(), DisplayError::enumerationFailed());
}

TEST_F(DisplayProviderTest, FailsTheSnapshotWhenFillingFails) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    simulator.failCalls("CGGetActiveDisplayList", Failure{.skip = 1});
    EXPECT_EQ(provider().snapshot().error(), DisplayError::enumerationFailed());
}

TEST_F(DisplayProviderTest, NamesADisplayWithoutColorSyncUUIDByVendorModelAndSerial) {
    auto display = simulation::makeDisplay(1, 1920, 1080);
    display.vendorNumber = 1552;
    display.modelNumber = 4;
    display.serialNumber = 0;
    simulator.addDisplay(display);
    const ScopedLogCapture capture;
    EXPECT_EQ(DisplayProvider::ref(platform, 1), DisplayRef::physical("1552-4-0"));
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::error,
                                      "No ColorSync UUID for display 1; using 1552-4-0"}}));
}

TEST_F(DisplayProviderTest, NamesADisplayByItsNumbersWhenItsUUIDCannotBeRendered) {
    auto display = simulation::makeDisplay(2, 1920, 1080);
    display.colorSyncUUID = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";
    display.vendorNumber = 4268;
    display.modelNumber = 41234;
    display.serialNumber = 808464432;
    simulator.addDisplay(display);
    simulator.failCalls("CFUUIDCreateString");
    const ScopedLogCapture capture;
    EXPECT_EQ(DisplayProvider::ref(platform, 2), DisplayRef::physical("4268-41234-808464432"));
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::error,
                                      "No ColorSync UUID for display 2; using 4268-41234-808464432"}}));
}

TEST_F(DisplayProviderTest, NamesADisplayByItsColorSyncUUIDInUpperCase) {
    auto display = simulation::makeDisplay(1, 1920, 1080);
    display.colorSyncUUID = "e621e1f8-c36c-495a-93fc-0c247a3e6e5f";
    simulator.addDisplay(display);
    const ScopedLogCapture capture;
    EXPECT_EQ(DisplayProvider::ref(platform, 1),
              DisplayRef::physical("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
    EXPECT_TRUE(capture.entries().empty());
}

TEST_F(DisplayProviderTest, ListsModesByAreaThenRefreshWithDuplicatesOnce) {
    auto display = simulation::makeDisplay(1, 1920, 1080);
    display.modes = {SimulatedMode{1920, 1080, 1920, 1080, 60.0, false},
                     SimulatedMode{1920, 1080, 1920, 1080, 60.0, false},
                     SimulatedMode{3840, 2160, 3840, 2160, 30.0, false},
                     SimulatedMode{1920, 1080, 1920, 1080, 120.0, false}};
    simulator.addDisplay(display);
    EXPECT_EQ(provider().availableModes(1), (std::vector<DisplayModeInfo>{{3840, 2160, 3840, 2160, 30.0},
                                                                          {1920, 1080, 1920, 1080, 120.0},
                                                                          {1920, 1080, 1920, 1080, 60.0}}));
}

TEST_F(DisplayProviderTest, ListsTheModeWithMorePointsFirst) {
    auto display = simulation::makeDisplay(1, 1920, 1080);
    display.modes = {SimulatedMode{1920, 1080, 960, 540, 60.0, false},
                     SimulatedMode{1920, 1080, 1920, 1080, 60.0, false}};
    simulator.addDisplay(display);
    EXPECT_EQ(provider().availableModes(1),
              (std::vector<DisplayModeInfo>{{1920, 1080, 1920, 1080, 60.0}, {1920, 1080, 960, 540, 60.0}}));
}

TEST_F(DisplayProviderTest, AsksForTheLowResolutionDuplicatesToo) {
    auto display = simulation::makeDisplay(1, 3840, 2160);
    display.modes = {SimulatedMode{3840, 2160, 1920, 1080, 60.0, false},
                     SimulatedMode{1920, 1080, 1920, 1080, 60.0, true}};
    simulator.addDisplay(display);
    EXPECT_EQ(provider().availableModes(1),
              (std::vector<DisplayModeInfo>{{3840, 2160, 1920, 1080, 60.0}, {1920, 1080, 1920, 1080, 60.0}}));
    EXPECT_EQ(coreGraphicsCalls({"CGDisplayCopyAllDisplayModes"}),
              std::vector<std::string>{"CGDisplayCopyAllDisplayModes(display=1, "
                                       "options={kCGDisplayShowDuplicateLowResolutionModes: true})"});
}

TEST_F(DisplayProviderTest, FailsTheModeListForEveryAnswerThatIsNotAListOfModes) {
    simulator.addDisplay(display(5, 1920, 1080, {0, 0}));
    for (const auto answer : {ModeListAnswer::none, ModeListAnswer::emptyArray,
                              ModeListAnswer::arrayOfNonModes, ModeListAnswer::notAnArray}) {
        simulator.editDisplayQuietly(
            5, [&](simulation::SimulatedDisplay& edited) { edited.modeListAnswer = answer; });
        EXPECT_EQ(provider().availableModes(5).error(), DisplayError::modeListUnavailable(5));
    }
}

TEST_F(DisplayProviderTest, RegistersItsCallbackForItsLifetime) {
    EXPECT_EQ(simulator.registeredCallbackCount(), 0U);
    {
        const DisplayProvider provider{debounceInterval, settleTimeout, platform, clock};
        EXPECT_EQ(simulator.registeredCallbackCount(), 1U);
    }
    EXPECT_EQ(simulator.registeredCallbackCount(), 0U);
    EXPECT_EQ(coreGraphicsCalls({"CGDisplayRegister", "CGDisplayRemove"}),
              (std::vector<std::string>{"CGDisplayRegisterReconfigurationCallback()",
                                        "CGDisplayRemoveReconfigurationCallback()"}));
}

TEST_F(DisplayProviderTest, IgnoresACallbackWithoutUserInfo) {
    DisplayProvider& subject = provider();
    DisplayProvider::reconfigurationCallback(1, kCGDisplayBeginConfigurationFlag, nullptr);
    EXPECT_FALSE(DisplayProviderTestApi::burstInFlight(subject));
    DisplayProvider::reconfigurationCallback(1, kCGDisplayBeginConfigurationFlag, &subject);
    EXPECT_TRUE(DisplayProviderTestApi::burstInFlight(subject));
}

TEST_F(DisplayProviderTest, PublishesOneTopologyIntervalAfterABurstOfCallbacks) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    simulator.addDisplay(display(2, 1280, 800, {1920, 0}));
    auto changes = provider().changes();
    // One burst: a begin call for each of the two displays, then one end call.
    simulator.moveDisplay(2, {-1280, 0});
    simulator.waitForCallbacks();
    EXPECT_TRUE(DisplayProviderTestApi::burstInFlight(provider()));
    clock.waitForSleepers(1);
    clock.advance(debounceInterval - std::chrono::nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_EQ(changes.tryNext(), std::nullopt);
    EXPECT_TRUE(coreGraphicsCalls({"CGGetActiveDisplayList"}).empty()) << "no snapshot during the burst";

    clock.advance(std::chrono::nanoseconds{1});
    const auto published = changes.next();
    ASSERT_TRUE(published.has_value());
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}).size(), 2U) << "exactly one snapshot";
    EXPECT_EQ(published, provider().snapshot());
    EXPECT_EQ(published->displays[1].bounds, (Rect{{-1280, 0}, {1280, 800}}));
    EXPECT_FALSE(DisplayProviderTestApi::burstInFlight(provider()));
    EXPECT_EQ(changes.tryNext(), std::nullopt);
}

TEST_F(DisplayProviderTest, PublishesOnceIntervalAfterTheFifthOfFiveCallbacksWithinTheInterval) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    DisplayProvider& subject = provider();
    auto changes = subject.changes();
    const Clock::Instant start = clock.now();
    for (int call = 0; call < 5; ++call) {
        DisplayProvider::reconfigurationCallback(
            1, call == 0 ? CGDisplayChangeSummaryFlags{kCGDisplayBeginConfigurationFlag} : 0U, &subject);
        clock.waitForSleepers(1);
        clock.advance(std::chrono::milliseconds{40});
    }
    // The fifth callback came at start + 160 ms.
    clock.advanceTo(start + std::chrono::milliseconds{160} + debounceInterval - std::chrono::nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_EQ(changes.tryNext(), std::nullopt);
    EXPECT_TRUE(coreGraphicsCalls({"CGGetActiveDisplayList"}).empty());

    clock.advance(std::chrono::nanoseconds{1});
    ASSERT_TRUE(changes.next().has_value());
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}).size(), 2U) << "exactly one snapshot";
    EXPECT_EQ(changes.tryNext(), std::nullopt);
}

TEST_F(DisplayProviderTest, PublishesTwiceForTwoCallbacksFurtherApartThanTheInterval) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    DisplayProvider& subject = provider();
    auto changes = subject.changes();
    DisplayProvider::reconfigurationCallback(1, 0, &subject);
    clock.waitForSleepers(1);
    clock.advance(debounceInterval);
    ASSERT_TRUE(changes.next().has_value());
    clock.advance(std::chrono::milliseconds{1});
    DisplayProvider::reconfigurationCallback(1, 0, &subject);
    clock.waitForSleepers(1);
    clock.advance(debounceInterval);
    ASSERT_TRUE(changes.next().has_value());
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}).size(), 4U) << "two snapshots";
}

TEST_F(DisplayProviderTest, StopsFeedingASubscriberThatStoppedListening) {
    DisplayProvider& subject = provider();
    auto staying = subject.changes();
    { auto leaving = subject.changes(); }
    DisplayProvider::reconfigurationCallback(1, 0, &subject);
    clock.waitForSleepers(1);
    clock.advance(debounceInterval);
    EXPECT_EQ(staying.next(), DisplayTopology{});
}

TEST(DisplayProviderWithoutPlatform, FailsEveryReadAndRegistersNothing) {
    const ManualClock clock;
    DisplayProvider provider{std::chrono::milliseconds{200}, std::chrono::seconds{2}, platform::PlatformAPI{},
                             clock};
    EXPECT_EQ(provider.snapshot().error(), DisplayError::enumerationFailed());
    EXPECT_EQ(DisplayProvider::takeSnapshot(platform::PlatformAPI{}).error(),
              DisplayError::enumerationFailed());
    EXPECT_EQ(provider.availableModes(1).error(), DisplayError::modeListUnavailable(1));
    const ScopedLogCapture capture;
    EXPECT_EQ(DisplayProvider::ref(platform::PlatformAPI{}, 7), DisplayRef::physical("0-0-0"));
    EXPECT_EQ(capture.entries().size(), 1U);
}

}  // namespace
}  // namespace screenweaver
