#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "CoreTypes/Clock.hpp"

namespace screenweaver {
namespace {

using namespace std::chrono_literals;

TEST(ManualClock, StandsStillUntilAdvanced) {
    const ManualClock clock;
    const auto start = clock.now();
    EXPECT_EQ(clock.now(), start);
}

TEST(ManualClock, MovesForwardByExactlyTheAdvance) {
    ManualClock clock;
    const auto start = clock.now();
    clock.advance(6s);
    EXPECT_EQ(clock.now() - start, 6s);
    clock.advanceTo(start + 1s);
    EXPECT_EQ(clock.now() - start, 6s) << "advancing to the past changes nothing";
}

TEST(ManualClock, ReturnsAtOnceForADeadlineAlreadyReached) {
    const ManualClock clock;
    EXPECT_TRUE(clock.sleepUntil(clock.now(), StopToken{}));
    EXPECT_TRUE(clock.sleepFor(0s, StopToken{}));
}

TEST(ManualClock, WakesASleeperOnlyWhenTimeReachesItsDeadline) {
    ManualClock clock;
    std::atomic<bool> woke{false};
    std::thread sleeper{[&] {
        EXPECT_TRUE(clock.sleepFor(6s, StopToken{}));
        woke = true;
    }};
    clock.waitForSleepers(1);
    clock.advance(5999ms);
    EXPECT_EQ(clock.sleeperCount(), 1U);
    EXPECT_FALSE(woke);
    clock.advance(1ms);
    sleeper.join();
    EXPECT_TRUE(woke);
    EXPECT_EQ(clock.sleeperCount(), 0U);
}

TEST(ManualClock, EndsASleepEarlyWhenStopIsRequested) {
    ManualClock clock;
    const StopSource source;
    std::thread sleeper{[&] { EXPECT_FALSE(clock.sleepFor(1h, source.token())); }};
    clock.waitForSleepers(1);
    source.requestStop();
    sleeper.join();
}

TEST(ManualClock, ReportsTheEarliestDeadlineOfItsSleepers) {
    ManualClock clock;
    const auto start = clock.now();
    EXPECT_EQ(clock.nextDeadline(), start);
    std::thread sleeper{[&] { clock.sleepFor(50ms, StopToken{}); }};
    clock.waitForSleepers(1);
    EXPECT_EQ(clock.nextDeadline(), start + 50ms);
    clock.advance(50ms);
    sleeper.join();
}

TEST(ContinuousClock, NeverGoesBack) {
    const auto& clock = ContinuousClock::shared();
    const auto first = clock.now();
    EXPECT_LE(first, clock.now());
}

TEST(ContinuousClock, EndsASleepAtOnceWhenStopWasAlreadyRequested) {
    const StopSource source;
    source.requestStop();
    EXPECT_FALSE(ContinuousClock::shared().sleepFor(1h, source.token()));
}

TEST(ContinuousClock, ReachesAShortDeadline) {
    const auto& clock = ContinuousClock::shared();
    const auto deadline = clock.now() + 1ms;
    EXPECT_TRUE(clock.sleepUntil(deadline, StopToken{}));
    EXPECT_GE(clock.now(), deadline);
}

}  // namespace
}  // namespace screenweaver
