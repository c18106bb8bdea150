#include <atomic>
#include <condition_variable>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "DisplayKit/ChangeDebouncer.hpp"

namespace screenweaver {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

DisplayTopology topologyWith(std::uint32_t id) {
    LiveDisplay display;
    display.displayID = id;
    display.ref = DisplayRef::physical("display-" + std::to_string(id));
    return DisplayTopology{{display}};
}

// A snapshot source that records when it was asked and answers with a numbered topology, or with
// nothing while `failing` is set.
struct SnapshotSource {
    explicit SnapshotSource(const ManualClock& sourceClock) : clock(sourceClock) {}

    const ManualClock& clock;
    std::mutex mutex;
    std::condition_variable called;
    std::vector<Clock::Instant> calls;
    std::atomic<bool> failing = false;
    // Read at each call: whether the debouncer still counted a burst in flight while its snapshot
    // was being taken.
    std::function<bool()> burstInFlight;
    std::vector<bool> inFlightDuringCalls;

    ChangeDebouncer::SnapshotProvider provider() {
        return [this]() -> std::optional<DisplayTopology> {
            std::scoped_lock lock{mutex};
            calls.push_back(clock.now());
            if (burstInFlight) {
                inFlightDuringCalls.push_back(burstInFlight());
            }
            called.notify_all();
            if (failing) {
                return std::nullopt;
            }
            return topologyWith(static_cast<std::uint32_t>(calls.size()));
        };
    }

    void waitForCalls(std::size_t count) {
        std::unique_lock lock{mutex};
        called.wait(lock, [&] { return calls.size() >= count; });
    }

    std::vector<Clock::Instant> callTimes() {
        std::scoped_lock lock{mutex};
        return calls;
    }

    std::vector<bool> inFlightSeenByCalls() {
        std::scoped_lock lock{mutex};
        return inFlightDuringCalls;
    }
};

constexpr milliseconds interval{500};

class ChangeDebouncerTest : public testing::Test {
protected:
    ManualClock clock;
    SnapshotSource source{clock};
    ChangeDebouncer debouncer{interval, source.provider(), clock};
};

TEST_F(ChangeDebouncerTest, PublishesOneSnapshotIntervalAfterTheLastOfFiveSignals) {
    auto stream = debouncer.broadcaster().stream();
    const Clock::Instant start = clock.now();
    for (int call = 0; call < 5; ++call) {
        debouncer.signal();
        clock.waitForSleepers(1);
        clock.advance(milliseconds{100});
    }
    // The fifth signal came at start + 400 ms; its quiet period ends at start + 900 ms.
    clock.advanceTo(start + milliseconds{900} - nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_TRUE(source.callTimes().empty());
    EXPECT_EQ(stream.tryNext(), std::nullopt);
    EXPECT_TRUE(debouncer.burstInFlight());

    clock.advance(nanoseconds{1});
    EXPECT_EQ(stream.next(), topologyWith(1));
    EXPECT_EQ(source.callTimes(), std::vector<Clock::Instant>{start + milliseconds{900}});
    EXPECT_FALSE(debouncer.burstInFlight());
    EXPECT_EQ(stream.tryNext(), std::nullopt);
}

TEST_F(ChangeDebouncerTest, PublishesTwiceForTwoSignalsFurtherApartThanTheInterval) {
    auto stream = debouncer.broadcaster().stream();
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval);
    EXPECT_EQ(stream.next(), topologyWith(1));

    clock.advance(milliseconds{100});
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval - nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_EQ(source.callTimes().size(), 1U);
    clock.advance(nanoseconds{1});
    EXPECT_EQ(stream.next(), topologyWith(2));
    EXPECT_EQ(source.callTimes().size(), 2U);
    EXPECT_EQ(stream.tryNext(), std::nullopt);
}

TEST_F(ChangeDebouncerTest, ReturnsFromSignalAtOnceWithTheBurstInFlight) {
    EXPECT_FALSE(debouncer.burstInFlight());
    debouncer.signal();
    EXPECT_TRUE(debouncer.burstInFlight());
    EXPECT_TRUE(source.callTimes().empty()) << "the signal takes no snapshot";
}

TEST_F(ChangeDebouncerTest, ClearsTheFlagAndBroadcastsNothingWhenTheSnapshotFails) {
    auto stream = debouncer.broadcaster().stream();
    source.failing = true;
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval);
    source.waitForCalls(1);
    EXPECT_FALSE(debouncer.burstInFlight());
    // The next burst publishes the second snapshot; nothing may come before it.
    source.failing = false;
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval);
    EXPECT_EQ(stream.next(), topologyWith(2));
    EXPECT_EQ(source.callTimes().size(), 2U);
}

TEST_F(ChangeDebouncerTest, TakesOneSnapshotForABurstWithNoSubscribers) {
    debouncer.signal();
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval);
    source.waitForCalls(1);
    EXPECT_FALSE(debouncer.burstInFlight());
    EXPECT_EQ(source.callTimes().size(), 1U);
}

TEST_F(ChangeDebouncerTest, LowersTheInFlightFlagBeforeTakingTheSnapshot) {
    source.burstInFlight = [this] { return debouncer.burstInFlight(); };
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval);
    source.waitForCalls(1);
    EXPECT_EQ(source.inFlightSeenByCalls(), std::vector<bool>{false});
}

TEST_F(ChangeDebouncerTest, AnswersTheInFlightFlagDuringTheQuietPeriod) {
    debouncer.signal();
    clock.waitForSleepers(1);
    clock.advance(interval - nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_TRUE(debouncer.burstInFlight());
    debouncer.signal();
    clock.advance(nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_TRUE(debouncer.burstInFlight())
        << "the older quiet period ended, but a later signal owns the burst";
}

TEST(ChangeDebouncer, StopsCleanlyWithABurstInFlight) {
    ManualClock clock;
    int snapshots = 0;
    {
        ChangeDebouncer debouncer{interval,
                                  [&] {
                                      ++snapshots;
                                      return std::optional<DisplayTopology>{};
                                  },
                                  clock};
        debouncer.signal();
        clock.waitForSleepers(1);
    }
    EXPECT_EQ(snapshots, 0);
}

}  // namespace
}  // namespace screenweaver
