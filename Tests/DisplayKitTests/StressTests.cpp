#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>

#include "DisplayKit/ChangeDebouncer.hpp"
#include "DisplayKitTests/SimulatedDisplaysTest.hpp"

namespace screenweaver {
namespace {

constexpr int rounds = 6;
constexpr int signallingThreads = 4;
constexpr int signalsPerThread = 2000;

// Subscribes and unsubscribes until told to stop.
void churnSubscriptions(TopologyBroadcaster& broadcaster, const std::atomic<bool>& done) {
    while (!done) {
        auto stream = broadcaster.stream();
        (void)stream.tryNext();
    }
}

TEST(ChangeDebouncerStress, PublishesExactlyOncePerQuietBurstWhileSignalledFromManyThreads) {
    ManualClock clock;
    std::atomic<int> snapshots = 0;
    ChangeDebouncer debouncer{std::chrono::milliseconds{100},
                              [&] {
                                  ++snapshots;
                                  return std::optional{DisplayTopology{}};
                              },
                              clock};
    auto listener = debouncer.broadcaster().stream();
    for (int round = 1; round <= rounds; ++round) {
        std::atomic<bool> done = false;
        std::thread churn{[&] { churnSubscriptions(debouncer.broadcaster(), done); }};
        std::vector<std::thread> signallers;
        for (int thread = 0; thread < signallingThreads; ++thread) {
            signallers.emplace_back([&] {
                for (int call = 0; call < signalsPerThread; ++call) {
                    debouncer.signal();
                    (void)debouncer.burstInFlight();
                }
            });
        }
        for (auto& thread : signallers) {
            thread.join();
        }
        EXPECT_TRUE(debouncer.burstInFlight());
        // Every signal of this round came at the same manual instant, so one step of the interval
        // ends the burst.
        clock.advance(std::chrono::milliseconds{100});
        ASSERT_EQ(listener.next(), DisplayTopology{});
        done = true;
        churn.join();
        EXPECT_EQ(snapshots, round);
    }
    EXPECT_EQ(listener.tryNext(), std::nullopt);
}

class DisplayProviderStress : public SimulatedDisplaysTest {};

TEST_F(DisplayProviderStress, SurvivesCallbacksSubscribersAndApplyTogether) {
    simulator.addDisplay(display(1, 1920, 1080, {0, 0}));
    simulator.addDisplay(display(2, 1280, 800, {1920, 0}));
    DisplayProvider& subject = provider();
    std::vector<DisplayTopology> published;
    {
        auto listener = subject.changes();
        for (int round = 1; round <= rounds; ++round) {
            std::atomic<bool> done = false;
            std::thread churn{[&] {
                while (!done) {
                    auto stream = subject.changes();
                    (void)stream.tryNext();
                }
            }};
            std::vector<std::thread> signallers;
            for (int thread = 0; thread < signallingThreads; ++thread) {
                signallers.emplace_back([&] {
                    for (int call = 0; call < signalsPerThread; ++call) {
                        DisplayProvider::reconfigurationCallback(1, 0, &subject);
                    }
                });
            }
            // Applied while the burst is (or was) in flight: it settles on this round's publication
            // or on a snapshot taken after it.
            LayoutPlan plan;
            plan.placements = {{2, {1920, 0}}};
            auto applied = std::async(std::launch::async, [&] { return subject.apply(plan, {}); });
            for (auto& thread : signallers) {
                thread.join();
            }
            clock.advance(debounceInterval);
            auto topology = listener.next();
            ASSERT_TRUE(topology.has_value());
            published.push_back(*topology);
            EXPECT_TRUE(applied.get().has_value());
            done = true;
            churn.join();
        }
        EXPECT_EQ(listener.tryNext(), std::nullopt);
    }
    EXPECT_EQ(published.size(), static_cast<std::size_t>(rounds));
    EXPECT_EQ(published.back(), subject.snapshot());
}

}  // namespace
}  // namespace screenweaver
