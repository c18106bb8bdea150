#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/CFRef.hpp"
#include "SimulatorFixture.hpp"

namespace screenweaver::simulation {
namespace {

using platform::CFRef;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowServerSimulatorConfiguration : public SimulatorFixture {
protected:
    void SetUp() override {
        SimulatedDisplay first = makeDisplay(1, 1920, 1080);
        SimulatedDisplay second = makeDisplay(2, 2560, 1440);
        second.origin = CGPoint{1920, 0};
        second.modes.push_back(SimulatedMode{1920, 1080, 1920, 1080, 60.0, false});
        simulator.addDisplay(first);
        simulator.addDisplay(second);
        simulator.waitForCallbacks();
        simulator.clearCalls();
    }

    CFRef<CGDisplayModeRef> modeOf(CGDirectDisplayID display, CFIndex index) {
        const auto modes = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(display, nullptr));
        const auto mode =
            static_cast<CGDisplayModeRef>(const_cast<void*>(cf.CFArrayGetValueAtIndex(modes.get(), index)));
        return CFRef<CGDisplayModeRef>::retain(cf, mode);
    }
};

TEST_F(WindowServerSimulatorConfiguration, AppliesEveryStagedChangeAtCompletion) {
    const auto mode = modeOf(2, 1);
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayMirrorOfDisplay(config, 2, 1), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayWithDisplayMode(config, 2, mode.get(), nullptr), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 2, -1920, 0), kCGErrorSuccess);
    // Nothing reaches the displays before the transaction completes.
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(2), 0u);
    EXPECT_EQ(cg.CGDisplayBounds(2).origin.x, 1920);
    ASSERT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently), kCGErrorSuccess);
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(2), 1u);
    EXPECT_EQ(cg.CGDisplayPixelsWide(2), 1920u);
    EXPECT_EQ(cg.CGDisplayBounds(2).origin.x, -1920);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorConfiguration, RecordsTheTransactionAsOneSequence) {
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayMirrorOfDisplay(config, 2, 0), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 1920, 0), kCGErrorSuccess);
    ASSERT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently), kCGErrorSuccess);
    EXPECT_THAT(simulator.calls(CallFamily::coreGraphics),
                ElementsAre("CGBeginDisplayConfiguration()",
                            "CGConfigureDisplayMirrorOfDisplay(config=1, display=2, master=0)",
                            "CGConfigureDisplayOrigin(config=1, display=2, x=1920, y=0)",
                            "CGCompleteDisplayConfiguration(config=1, option=kCGConfigurePermanently)"));
}

TEST_F(WindowServerSimulatorConfiguration, AppliesNothingOfACancelledTransaction) {
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 1080), kCGErrorSuccess);
    ASSERT_EQ(cg.CGCancelDisplayConfiguration(config), kCGErrorSuccess);
    EXPECT_EQ(cg.CGDisplayBounds(2).origin.x, 1920);
    EXPECT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently), kCGErrorIllegalArgument);
}

TEST_F(WindowServerSimulatorConfiguration, LeavesAFailedCompletionOpenForCancelling) {
    simulator.failCalls("CGCompleteDisplayConfiguration", Failure{.error = kCGErrorIllegalArgument});
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 1080), kCGErrorSuccess);
    EXPECT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently), kCGErrorIllegalArgument);
    EXPECT_EQ(cg.CGDisplayBounds(2).origin.x, 1920);
    EXPECT_EQ(cg.CGCancelDisplayConfiguration(config), kCGErrorSuccess);
}

TEST_F(WindowServerSimulatorConfiguration, FailsAStagingCallWithTheScriptedError) {
    simulator.failCalls("CGConfigureDisplayOrigin", Failure{.error = kCGErrorRangeCheck, .count = 1});
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    EXPECT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 1080), kCGErrorRangeCheck);
    EXPECT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 1080), kCGErrorSuccess);
    EXPECT_EQ(cg.CGCancelDisplayConfiguration(config), kCGErrorSuccess);
}

TEST_F(WindowServerSimulatorConfiguration, RefusesToStageForAnUnknownDisplayOrHandle) {
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    EXPECT_EQ(cg.CGConfigureDisplayOrigin(config, 9, 0, 0), kCGErrorIllegalArgument);
    const auto foreignMode = modeOf(1, 0);
    EXPECT_EQ(cg.CGConfigureDisplayWithDisplayMode(config, 2, foreignMode.get(), nullptr),
              kCGErrorIllegalArgument);
    EXPECT_EQ(cg.CGCancelDisplayConfiguration(config), kCGErrorSuccess);
    EXPECT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 0), kCGErrorIllegalArgument);
}

TEST_F(WindowServerSimulatorConfiguration, BreaksAMirrorThroughASessionTransaction) {
    simulator.setMirrorSource(2, 1);
    simulator.clearCalls();
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayMirrorOfDisplay(config, 2, kCGNullDirectDisplay), kCGErrorSuccess);
    ASSERT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigureForSession), kCGErrorSuccess);
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(2), 0u);
    EXPECT_EQ(simulator.calls(CallFamily::coreGraphics)[2],
              "CGCompleteDisplayConfiguration(config=1, option=kCGConfigureForSession)");
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorConfiguration, SwitchesModeOnlyWhereTheDisplayAccepts) {
    const auto mode = modeOf(2, 1);
    EXPECT_EQ(cg.CGDisplaySetDisplayMode(2, mode.get(), nullptr), kCGErrorSuccess);
    EXPECT_EQ(cg.CGDisplayPixelsWide(2), 1920u);
    simulator.editDisplayQuietly(2, [](SimulatedDisplay& display) { display.acceptsModeSwitch = false; });
    const auto first = modeOf(2, 0);
    EXPECT_EQ(cg.CGDisplaySetDisplayMode(2, first.get(), nullptr), kCGErrorCannotComplete);
    EXPECT_EQ(cg.CGDisplayPixelsWide(2), 1920u);
    EXPECT_EQ(cg.CGDisplaySetDisplayMode(1, first.get(), nullptr), kCGErrorIllegalArgument);
    simulator.waitForCallbacks();
}

struct ReceivedCalls {
    std::mutex mutex;
    std::vector<std::pair<CGDirectDisplayID, CGDisplayChangeSummaryFlags>> calls;
    std::vector<std::thread::id> threads;
};

void receive(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags, void* userInfo) {
    auto& received = *static_cast<ReceivedCalls*>(userInfo);
    std::scoped_lock lock{received.mutex};
    received.calls.emplace_back(display, flags);
    received.threads.push_back(std::this_thread::get_id());
}

using Call = std::pair<CGDirectDisplayID, CGDisplayChangeSummaryFlags>;

TEST_F(WindowServerSimulatorConfiguration, DeliversABeginPerOnlineDisplayThenAnEndPerChangedOne) {
    ReceivedCalls received;
    ASSERT_EQ(cg.CGDisplayRegisterReconfigurationCallback(&receive, &received), kCGErrorSuccess);
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(cg.CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 2, 0, 1080), kCGErrorSuccess);
    ASSERT_EQ(cg.CGConfigureDisplayOrigin(config, 1, 0, 0), kCGErrorSuccess);
    ASSERT_EQ(cg.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently), kCGErrorSuccess);
    simulator.waitForCallbacks();
    {
        std::scoped_lock lock{received.mutex};
        EXPECT_THAT(
            received.calls,
            ElementsAre(Call{1, kCGDisplayBeginConfigurationFlag}, Call{2, kCGDisplayBeginConfigurationFlag},
                        Call{2, kCGDisplayMovedFlag | kCGDisplayDesktopShapeChangedFlag}));
        for (const std::thread::id thread : received.threads) {
            EXPECT_NE(thread, std::this_thread::get_id());
        }
    }
    ASSERT_EQ(cg.CGDisplayRemoveReconfigurationCallback(&receive, &received), kCGErrorSuccess);
}

TEST_F(WindowServerSimulatorConfiguration, DeliversAddAndRemoveBursts) {
    ReceivedCalls received;
    ASSERT_EQ(cg.CGDisplayRegisterReconfigurationCallback(&receive, &received), kCGErrorSuccess);
    simulator.addDisplay(makeDisplay(3, 1280, 1024));
    simulator.removeDisplay(1);
    simulator.waitForCallbacks();
    {
        std::scoped_lock lock{received.mutex};
        EXPECT_THAT(
            received.calls,
            ElementsAre(Call{1, kCGDisplayBeginConfigurationFlag}, Call{2, kCGDisplayBeginConfigurationFlag},
                        Call{3, kCGDisplayAddFlag | kCGDisplayDesktopShapeChangedFlag},
                        Call{1, kCGDisplayBeginConfigurationFlag}, Call{2, kCGDisplayBeginConfigurationFlag},
                        Call{3, kCGDisplayBeginConfigurationFlag},
                        Call{1, kCGDisplayRemoveFlag | kCGDisplayDesktopShapeChangedFlag},
                        Call{2, kCGDisplaySetMainFlag}));
    }
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(2u, 3u));
    ASSERT_EQ(cg.CGDisplayRemoveReconfigurationCallback(&receive, &received), kCGErrorSuccess);
}

TEST_F(WindowServerSimulatorConfiguration, StopsCallingARemovedCallback) {
    ReceivedCalls received;
    ASSERT_EQ(cg.CGDisplayRegisterReconfigurationCallback(&receive, &received), kCGErrorSuccess);
    ASSERT_EQ(cg.CGDisplayRemoveReconfigurationCallback(&receive, &received), kCGErrorSuccess);
    EXPECT_EQ(simulator.registeredCallbackCount(), 0u);
    simulator.moveDisplay(2, CGPoint{0, 1080});
    simulator.waitForCallbacks();
    std::scoped_lock lock{received.mutex};
    EXPECT_THAT(received.calls, IsEmpty());
}

TEST_F(WindowServerSimulatorConfiguration, ChangesScheduledDisplaysWhenTheirTimeHasCome) {
    using namespace std::chrono_literals;
    simulator.removeDisplayLater(2, 6s);
    simulator.addDisplayLater(makeDisplay(3, 1280, 1024), 50ms);
    clock.advance(49ms);
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u, 2u));
    clock.advance(1ms);
    uint32_t count = 0;
    ASSERT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    EXPECT_EQ(count, 3u);
    clock.advance(6s);
    simulator.waitForCallbacks();
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u, 3u));
}

struct ReadingCallback {
    const platform::CoreGraphicsAPI* cg;
    std::atomic<int> calls{0};
};

// Reads the display list from inside the callback, as a provider taking a snapshot would.
void readDisplays(CGDirectDisplayID, CGDisplayChangeSummaryFlags, void* userInfo) {
    auto& reader = *static_cast<ReadingCallback*>(userInfo);
    uint32_t count = 0;
    reader.cg->CGGetActiveDisplayList(0, nullptr, &count);
    ++reader.calls;
}

TEST_F(WindowServerSimulatorConfiguration, ServesSeveralThreadsWhileDeliveringCallbacks) {
    ReadingCallback reader{&cg};
    ASSERT_EQ(cg.CGDisplayRegisterReconfigurationCallback(&readDisplays, &reader), kCGErrorSuccess);
    std::vector<std::thread> readers;
    for (int thread = 0; thread < 3; ++thread) {
        readers.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                const auto modes = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(2, nullptr));
                EXPECT_EQ(cf.CFArrayGetCount(modes.get()), 2);
                EXPECT_NE(cg.CGDisplayBounds(1).size.width, 0);
            }
        });
    }
    for (int round = 0; round < 20; ++round) {
        simulator.moveDisplay(2, CGPoint{1920, static_cast<CGFloat>(round)});
    }
    for (std::thread& thread : readers) {
        thread.join();
    }
    simulator.waitForCallbacks();
    // Each move is a burst of one begin call per display and one end call.
    EXPECT_EQ(reader.calls.load(), 20 * 3);
    ASSERT_EQ(cg.CGDisplayRemoveReconfigurationCallback(&readDisplays, &reader), kCGErrorSuccess);
}

}  // namespace
}  // namespace screenweaver::simulation
