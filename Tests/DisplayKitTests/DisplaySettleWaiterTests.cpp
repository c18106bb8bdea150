#include <algorithm>
#include <atomic>
#include <future>
#include <gtest/gtest.h>

#include "DisplayKit/DisplaySettleWaiter.hpp"

namespace screenweaver {
namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

DisplayTopology topologyWith(std::vector<std::uint32_t> ids) {
    DisplayTopology topology;
    for (const auto id : ids) {
        LiveDisplay display;
        display.displayID = id;
        display.ref = DisplayRef::physical("display-" + std::to_string(id));
        topology.displays.push_back(display);
    }
    return topology;
}

bool holdsDisplay3(const DisplayTopology& topology) {
    return std::ranges::any_of(topology.displays,
                               [](const LiveDisplay& display) { return display.displayID == 3; });
}

constexpr seconds timeout{3};

// A manual clock that counts every wait begun on it, so a test can tell that no timeout was ever
// started, even one that was stopped again before the waiter returned.
class CountingClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return clock_.now(); }
    bool sleepUntil(Instant deadline, const StopToken& stop) const override {
        ++waitsBegun_;
        return clock_.sleepUntil(deadline, stop);
    }
    [[nodiscard]] int waitsBegun() const { return waitsBegun_; }

private:
    ManualClock clock_;
    mutable std::atomic<int> waitsBegun_ = 0;
};

TEST(DisplaySettleWaiter, ReturnsAPassingImmediateSnapshotWithoutWaiting) {
    CountingClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    int snapshots = 0;
    DisplaySettleWaiter waiter{std::move(stream),
                               [&] {
                                   ++snapshots;
                                   return std::optional{topologyWith({1, 3})};
                               },
                               timeout, clock};
    EXPECT_EQ(waiter.firstSettledTopology(holdsDisplay3), topologyWith({1, 3}));
    EXPECT_EQ(snapshots, 1);
    EXPECT_EQ(clock.waitsBegun(), 0) << "no timeout was started";
}

TEST(DisplaySettleWaiter, StopsItsTimeoutWhenAPublishedTopologyPasses) {
    CountingClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    feed.yield(topologyWith({1, 3}));
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional<DisplayTopology>{}; }, timeout,
                               clock};
    // The clock never moves: the waiter returns only because the match ends its timeout.
    EXPECT_EQ(waiter.firstSettledTopology(holdsDisplay3), topologyWith({1, 3}));
    EXPECT_EQ(clock.waitsBegun(), 1);
}

TEST(DisplaySettleWaiter, ReturnsTheFirstPassingPublishedTopologyWhileABurstIsInFlight) {
    ManualClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional<DisplayTopology>{}; }, timeout,
                               clock};
    auto result = std::async(std::launch::async, [&] { return waiter.firstSettledTopology(holdsDisplay3); });
    clock.waitForSleepers(1);
    feed.yield(topologyWith({1, 3}));
    EXPECT_EQ(result.get(), topologyWith({1, 3}));
}

TEST(DisplaySettleWaiter, SkipsPublishedTopologiesThatFailTheTest) {
    ManualClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    // Published between subscribing and waiting: buffered, and still seen.
    feed.yield(topologyWith({1}));
    feed.yield(topologyWith({1, 2}));
    feed.yield(topologyWith({3}));
    feed.yield(topologyWith({1, 3}));
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional{topologyWith({1})}; }, timeout,
                               clock};
    EXPECT_EQ(waiter.firstSettledTopology(holdsDisplay3), topologyWith({3}));
}

TEST(DisplaySettleWaiter, GivesNothingOnceTheTimeoutHasPassed) {
    ManualClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional<DisplayTopology>{}; }, timeout,
                               clock};
    auto result = std::async(std::launch::async, [&] { return waiter.firstSettledTopology(holdsDisplay3); });
    clock.waitForSleepers(1);
    feed.yield(topologyWith({1}));
    clock.advance(timeout - nanoseconds{1});
    clock.waitForSleepers(1);
    EXPECT_EQ(result.wait_for(std::chrono::milliseconds{0}), std::future_status::timeout);
    clock.advance(nanoseconds{1});
    EXPECT_EQ(result.get(), std::nullopt);
}

TEST(DisplaySettleWaiter, GivesNothingWhenTheSubscriptionEnds) {
    ManualClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    feed.yield(topologyWith({1}));
    feed.finish();
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional<DisplayTopology>{}; }, timeout,
                               clock};
    EXPECT_EQ(waiter.firstSettledTopology(holdsDisplay3), std::nullopt);
}

TEST(DisplaySettleWaiter, GivesNothingWhenStopped) {
    ManualClock clock;
    auto [stream, feed] = AsyncStream<DisplayTopology>::make();
    DisplaySettleWaiter waiter{std::move(stream), [] { return std::optional<DisplayTopology>{}; }, timeout,
                               clock};
    const StopSource stop;
    auto result = std::async(std::launch::async,
                             [&] { return waiter.firstSettledTopology(holdsDisplay3, stop.token()); });
    clock.waitForSleepers(1);
    stop.requestStop();
    EXPECT_EQ(result.get(), std::nullopt);
}

}  // namespace
}  // namespace screenweaver
