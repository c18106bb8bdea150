#include <future>
#include <gtest/gtest.h>
#include <tuple>

#include "CoreTypes/CapturingLogSink.hpp"
#include "DisplayKitTests/SimulatedDisplaysTest.hpp"

namespace screenweaver {
namespace {

using simulation::Failure;
using simulation::SimulatedMode;
using std::chrono::nanoseconds;

const std::initializer_list<std::string_view> transactionCalls{
    "CGBeginDisplayConfiguration", "CGConfigureDisplay", "CGCompleteDisplayConfiguration",
    "CGCancelDisplayConfiguration"};

// What a transaction may change about a display: origin, current mode and mirror source.
using DisplayState = std::tuple<double, double, std::optional<std::size_t>, CGDirectDisplayID>;

class DisplayProviderApplyTest : public SimulatedDisplaysTest {
protected:
    void SetUp() override {
        auto main = display(1, 1920, 1080, {0, 0});
        main.modes.push_back(SimulatedMode{1280, 720, 1280, 720, 60.0, false});
        simulator.addDisplay(main);
        // Display 2 mirrors display 1 and offers a scaled mode and a 1920 x 1200 mode.
        auto second = display(2, 2560, 1600, {1920, 0});
        second.modes = {SimulatedMode{2560, 1600, 1280, 800, 60.0, false},
                        SimulatedMode{1920, 1200, 1920, 1200, 60.0, false}};
        second.mirrorSource = 1;
        simulator.addDisplay(second);
    }

    std::vector<DisplayState> displayStates() const {
        std::vector<DisplayState> states;
        for (const CGDirectDisplayID id : simulator.activeDisplayIDs()) {
            const auto found = simulator.display(id);
            states.emplace_back(found->origin.x, found->origin.y, found->currentMode, found->mirrorSource);
        }
        return states;
    }

    /// Un-mirrors display 2, switches it to 1920 x 1200 and puts it left of display 1.
    static LayoutPlan fullPlan() {
        LayoutPlan plan;
        plan.unmirror = {2};
        plan.modeChanges = {{2, {1920, 1200, 1920, 1200, 60.0}}};
        plan.placements = {{2, {-1920, 0}}};
        return plan;
    }

    const std::vector<std::string> fullTransaction{
        "CGBeginDisplayConfiguration()", "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
        "CGConfigureDisplayWithDisplayMode(config=1, display=2, mode=1920x1200/1920x1200@60.0, options=NULL)",
        "CGConfigureDisplayOrigin(config=1, display=2, x=-1920, y=0)",
        "CGCompleteDisplayConfiguration(config=1, option=kCGConfigurePermanently)"};
};

TEST_F(DisplayProviderApplyTest, AppliesAPlanInOnePermanentTransaction) {
    const ScopedLogCapture capture;
    ASSERT_TRUE(provider().apply(fullPlan(), {}).has_value());
    EXPECT_EQ(coreGraphicsCalls(transactionCalls), fullTransaction);
    simulator.waitForCallbacks();
    EXPECT_EQ(displayStates(), (std::vector<DisplayState>{{0, 0, 0, 0}, {-1920, 0, 1, 0}}));
    EXPECT_EQ(
        capture.entries(),
        (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::defaultLevel,
                                "Committed arrangement: 1 placements, 1 mode changes, 1 un-mirrored"}}));
}

TEST_F(DisplayProviderApplyTest, CommitsAnEmptyPlanAsAnEmptyTransaction) {
    const ScopedLogCapture capture;
    const auto before = displayStates();
    ASSERT_TRUE(provider().apply({}, {}).has_value());
    EXPECT_EQ(coreGraphicsCalls(transactionCalls),
              (std::vector<std::string>{
                  "CGBeginDisplayConfiguration()",
                  "CGCompleteDisplayConfiguration(config=1, option=kCGConfigurePermanently)"}));
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}).size(), 2U) << "one settled snapshot";
    EXPECT_EQ(displayStates(), before);
    EXPECT_EQ(
        capture.entries(),
        (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::defaultLevel,
                                "Committed arrangement: 0 placements, 0 mode changes, 0 un-mirrored"}}));
}

TEST_F(DisplayProviderApplyTest, CancelsEverythingWhenAnOriginCannotBeStaged) {
    const auto before = displayStates();
    simulator.failCalls("CGConfigureDisplayOrigin");
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(),
              DisplayError::configurationFailed("origin change of display 2 failed (CGError 1000)"));
    auto expected = fullTransaction;
    expected.back() = "CGCancelDisplayConfiguration(config=1)";
    EXPECT_EQ(coreGraphicsCalls(transactionCalls), expected);
    simulator.waitForCallbacks();
    EXPECT_EQ(displayStates(), before);
}

TEST_F(DisplayProviderApplyTest, CancelsEverythingWhenCompletingFails) {
    const ScopedLogCapture capture;
    const auto before = displayStates();
    simulator.failCalls("CGCompleteDisplayConfiguration", Failure{.error = kCGErrorIllegalArgument});
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(),
              DisplayError::configurationFailed("CGCompleteDisplayConfiguration failed (CGError 1001)"));
    auto expected = fullTransaction;
    expected.push_back("CGCancelDisplayConfiguration(config=1)");
    EXPECT_EQ(coreGraphicsCalls(transactionCalls), expected);
    simulator.waitForCallbacks();
    EXPECT_EQ(displayStates(), before);
    EXPECT_TRUE(capture.entries().empty());
}

TEST_F(DisplayProviderApplyTest, CancelsWhenUnmirroringCannotBeStaged) {
    const auto before = displayStates();
    simulator.failCalls("CGConfigureDisplayMirrorOfDisplay");
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(),
              DisplayError::configurationFailed("un-mirror of display 2 failed (CGError 1000)"));
    EXPECT_EQ(coreGraphicsCalls(transactionCalls),
              (std::vector<std::string>{"CGBeginDisplayConfiguration()",
                                        "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
                                        "CGCancelDisplayConfiguration(config=1)"}));
    EXPECT_EQ(displayStates(), before);
}

TEST_F(DisplayProviderApplyTest, CancelsWhenAModeChangeCannotBeStaged) {
    const auto before = displayStates();
    simulator.failCalls("CGConfigureDisplayWithDisplayMode", Failure{.error = kCGErrorCannotComplete});
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(),
              DisplayError::configurationFailed("mode change of display 2 failed (CGError 1004)"));
    auto expected = fullTransaction;
    expected.resize(3);
    expected.push_back("CGCancelDisplayConfiguration(config=1)");
    EXPECT_EQ(coreGraphicsCalls(transactionCalls), expected);
    EXPECT_EQ(displayStates(), before);
}

TEST_F(DisplayProviderApplyTest, MatchesTheRefreshRateExactly) {
    LayoutPlan plan = fullPlan();
    plan.modeChanges = {{2, {1920, 1200, 1920, 1200, 59.94}}};
    EXPECT_EQ(provider().apply(plan, {}).error(),
              DisplayError::configurationFailed(
                  "no mode matching DisplayModeInfo(pixelWidth: 1920, pixelHeight: 1200, "
                  "pointWidth: 1920, pointHeight: 1200, refreshRate: 59.94) on display 2"));
    EXPECT_EQ(coreGraphicsCalls(transactionCalls),
              (std::vector<std::string>{"CGBeginDisplayConfiguration()",
                                        "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
                                        "CGCancelDisplayConfiguration(config=1)"}));
}

TEST_F(DisplayProviderApplyTest, MatchesModesInTheFullListIncludingLowResolutionDuplicates) {
    simulator.editDisplayQuietly(2, [](simulation::SimulatedDisplay& edited) {
        edited.modes.push_back(SimulatedMode{1280, 800, 1280, 800, 60.0, true});
    });
    LayoutPlan plan;
    plan.modeChanges = {{2, {1280, 800, 1280, 800, 60.0}}};
    ASSERT_TRUE(provider().apply(plan, {}).has_value());
    EXPECT_EQ(coreGraphicsCalls({"CGConfigureDisplayWithDisplayMode"}),
              std::vector<std::string>{"CGConfigureDisplayWithDisplayMode(config=1, display=2, "
                                       "mode=1280x800/1280x800@60.0, options=NULL)"});
}

TEST_F(DisplayProviderApplyTest, CancelsWhenTheModeListOfAChangedDisplayIsUnavailable) {
    simulator.editDisplayQuietly(2, [](simulation::SimulatedDisplay& edited) {
        edited.modeListAnswer = simulation::ModeListAnswer::none;
    });
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(), DisplayError::modeListUnavailable(2));
    EXPECT_EQ(coreGraphicsCalls(transactionCalls).back(), "CGCancelDisplayConfiguration(config=1)");
}

TEST_F(DisplayProviderApplyTest, CancelsAnOriginBeyondDisplayCoordinatesAfterEarlierStagesSucceeded) {
    // The validator rejects such a plan before any transaction; the transaction itself must still
    // refuse it.
    LayoutPlan plan = fullPlan();
    plan.placements = {{1, {0, 0}}, {2, {2147483648.0, 0}}};
    EXPECT_EQ(DisplayProviderTestApi::commit(platform, plan).error(),
              DisplayError::configurationFailed(
                  "origin (2147483648.0, 0.0) of display 2 is not expressible in display coordinates"));
    EXPECT_EQ(coreGraphicsCalls(transactionCalls),
              (std::vector<std::string>{"CGBeginDisplayConfiguration()",
                                        "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
                                        "CGConfigureDisplayWithDisplayMode(config=1, display=2, "
                                        "mode=1920x1200/1920x1200@60.0, options=NULL)",
                                        "CGConfigureDisplayOrigin(config=1, display=1, x=0, y=0)",
                                        "CGCancelDisplayConfiguration(config=1)"}));
}

TEST_F(DisplayProviderApplyTest, RoundsOriginsHalfAwayFromZero) {
    LayoutPlan plan;
    plan.placements = {{2, {-1919.5, 0.4}}};
    EXPECT_EQ(DisplayProviderTestApi::commit(platform, plan), (std::expected<void, DisplayError>{}));
    EXPECT_EQ(coreGraphicsCalls({"CGConfigureDisplayOrigin"}),
              std::vector<std::string>{"CGConfigureDisplayOrigin(config=1, display=2, x=-1920, y=0)"});
}

TEST_F(DisplayProviderApplyTest, FailsWithoutCancellingWhenTheTransactionCannotBegin) {
    simulator.failCalls("CGBeginDisplayConfiguration");
    EXPECT_EQ(provider().apply(fullPlan(), {}).error(),
              DisplayError::configurationFailed("CGBeginDisplayConfiguration failed"));
    EXPECT_EQ(coreGraphicsCalls(transactionCalls), std::vector<std::string>{"CGBeginDisplayConfiguration()"});
}

TEST_F(DisplayProviderApplyTest, RejectsAnOverlappingPlanWithoutOpeningATransaction) {
    const ScopedLogCapture capture;
    LayoutPlan plan;
    plan.placements = {{2, {1000, 0}}};
    EXPECT_EQ(provider().apply(plan, {}).error(), DisplayError::invalidLayout("displays 1 and 2 overlap"));
    EXPECT_TRUE(coreGraphicsCalls(transactionCalls).empty());
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::error,
                                      "Rejected layout plan: invalidLayout(reason: \"displays 1 "
                                      "and 2 overlap\")"}}));
}

TEST_F(DisplayProviderApplyTest, WaitsForABurstInFlightBeforePlanning) {
    DisplayProvider& subject = provider();
    simulator.addDisplay(display(3, 1920, 1080, {0, 1080}));
    simulator.waitForCallbacks();
    ASSERT_TRUE(DisplayProviderTestApi::burstInFlight(subject));
    simulator.clearCalls();
    const ScopedLogCapture capture;

    LayoutPlan plan;
    plan.placements = {{3, {0, 1080}}};
    auto applied = std::async(std::launch::async, [&] { return subject.apply(plan, {}); });
    clock.waitForSleepers(2);  // the quiet period and the settle timeout
    EXPECT_TRUE(coreGraphicsCalls({"CGGetActiveDisplayList"}).empty())
        << "no snapshot while the burst is in flight";
    clock.advance(debounceInterval - nanoseconds{1});
    clock.waitForSleepers(2);
    EXPECT_EQ(applied.wait_for(std::chrono::milliseconds{0}), std::future_status::timeout);
    EXPECT_TRUE(coreGraphicsCalls(transactionCalls).empty());

    clock.advance(nanoseconds{1});
    ASSERT_TRUE(applied.get().has_value());
    EXPECT_EQ(
        coreGraphicsCalls(transactionCalls),
        (std::vector<std::string>{
            "CGBeginDisplayConfiguration()", "CGConfigureDisplayOrigin(config=1, display=3, x=0, y=1080)",
            "CGCompleteDisplayConfiguration(config=1, option=kCGConfigurePermanently)"}));
    EXPECT_EQ(coreGraphicsCalls({"CGGetActiveDisplayList"}).size(), 2U) << "the published snapshot only";
    EXPECT_EQ(
        capture.entries(),
        (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::defaultLevel,
                                "Committed arrangement: 1 placements, 0 mode changes, 0 un-mirrored"}}));
}

TEST_F(DisplayProviderApplyTest, UsesALiveSnapshotWhenTheDisplaysDoNotSettleInTime) {
    DisplayProvider& subject = provider();
    const ScopedLogCapture capture;
    LayoutPlan plan;
    plan.placements = {{9, {1920, 0}}};
    auto applied = std::async(std::launch::async, [&] { return subject.apply(plan, {}); });
    clock.waitForSleepers(1);
    clock.advance(settleTimeout - nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_EQ(applied.wait_for(std::chrono::milliseconds{0}), std::future_status::timeout);
    EXPECT_TRUE(capture.entries().empty());

    clock.advance(nanoseconds{1});
    EXPECT_EQ(applied.get().error(), DisplayError::displayNotFound(DisplayRef::physical("0-0-0")));
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::error,
                                      "Displays did not settle before the timeout; using a live snapshot"},
                                     {"org.screenweaver", "display", LogLevel::error,
                                      "No ColorSync UUID for display 9; using 0-0-0"}}));
    EXPECT_TRUE(coreGraphicsCalls(transactionCalls).empty());
}

TEST_F(DisplayProviderApplyTest, FailsWhenTheLiveSnapshotAfterTheTimeoutFails) {
    DisplayProvider& subject = provider();
    simulator.failCalls("CGGetActiveDisplayList");
    auto applied = std::async(std::launch::async, [&] { return subject.apply({}, {}); });
    clock.waitForSleepers(1);
    clock.advance(settleTimeout);
    EXPECT_EQ(applied.get().error(), DisplayError::enumerationFailed());
    EXPECT_TRUE(coreGraphicsCalls(transactionCalls).empty());
}

TEST_F(DisplayProviderApplyTest, EndsTheSettleWaitEarlyWhenStopped) {
    DisplayProvider& subject = provider();
    const ScopedLogCapture capture;
    LayoutPlan plan;
    plan.placements = {{9, {1920, 0}}};
    const StopSource stop;
    auto applied = std::async(std::launch::async, [&] { return subject.apply(plan, stop.token()); });
    clock.waitForSleepers(1);
    stop.requestStop();
    EXPECT_EQ(applied.get().error(), DisplayError::displayNotFound(DisplayRef::physical("0-0-0")));
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{{"org.screenweaver", "display", LogLevel::error,
                                      "Displays did not settle before the timeout; using a live snapshot"},
                                     {"org.screenweaver", "display", LogLevel::error,
                                      "No ColorSync UUID for display 9; using 0-0-0"}}));
}

TEST(DisplayProviderApplyWithoutPlatform, FailsTheLiveSnapshotAfterTheSettleTimeout) {
    ManualClock clock;
    DisplayProvider provider{std::chrono::milliseconds{200}, std::chrono::seconds{2}, platform::PlatformAPI{},
                             clock};
    auto applied = std::async(std::launch::async, [&] { return provider.apply({}, {}); });
    clock.waitForSleepers(1);
    clock.advance(std::chrono::seconds{2});
    EXPECT_EQ(applied.get().error(), DisplayError::enumerationFailed());
}

}  // namespace
}  // namespace screenweaver
