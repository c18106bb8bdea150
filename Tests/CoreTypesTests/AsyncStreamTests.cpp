#include <gtest/gtest.h>
#include <thread>

#include "CoreTypes/AsyncStream.hpp"

namespace screenweaver {
namespace {

TEST(AsyncStream, DeliversElementsInTheOrderTheyWereYielded) {
    auto [stream, continuation] = AsyncStream<int>::make();
    EXPECT_TRUE(continuation.yield(1));
    EXPECT_TRUE(continuation.yield(2));
    EXPECT_EQ(stream.next(), 1);
    EXPECT_EQ(stream.next(), 2);
    EXPECT_EQ(stream.tryNext(), std::nullopt);
}

TEST(AsyncStream, BuffersWithoutBound) {
    auto [stream, continuation] = AsyncStream<int>::make();
    for (int value = 0; value < 10000; ++value) {
        ASSERT_TRUE(continuation.yield(value));
    }
    for (int value = 0; value < 10000; ++value) {
        ASSERT_EQ(stream.tryNext(), value);
    }
}

TEST(AsyncStream, WaitsForAnElementFromAnotherThread) {
    auto [stream, continuation] = AsyncStream<int>::make();
    std::thread producer{[feed = continuation] { feed.yield(7); }};
    EXPECT_EQ(stream.next(), 7);
    producer.join();
}

TEST(AsyncStream, GivesNothingAfterTheBufferOfAFinishedStream) {
    auto [stream, continuation] = AsyncStream<int>::make();
    continuation.yield(1);
    continuation.finish();
    EXPECT_FALSE(continuation.yield(2));
    EXPECT_EQ(stream.next(), 1);
    EXPECT_EQ(stream.next(), std::nullopt);
}

TEST(AsyncStream, GivesNothingWhenTheWaitIsStopped) {
    auto [stream, continuation] = AsyncStream<int>::make();
    const StopSource source;
    std::thread stopper{[&] { source.requestStop(); }};
    EXPECT_EQ(stream.next(source.token()), std::nullopt);
    stopper.join();
}

TEST(AsyncStream, RunsTheTerminationHandlerOnceWhenTheConsumerStops) {
    int terminations = 0;
    std::optional<AsyncStream<int>::Continuation> feed;
    {
        auto [stream, continuation] = AsyncStream<int>::make();
        continuation.onTermination([&] { ++terminations; });
        feed = continuation;
        EXPECT_EQ(terminations, 0);
    }
    EXPECT_EQ(terminations, 1);
    EXPECT_FALSE(feed->yield(1)) << "nobody listens any more";
}

TEST(AsyncStream, RunsALateTerminationHandlerAtOnce) {
    std::optional<AsyncStream<int>::Continuation> feed;
    {
        auto [stream, continuation] = AsyncStream<int>::make();
        feed = continuation;
    }
    int terminations = 0;
    feed->onTermination([&] { ++terminations; });
    EXPECT_EQ(terminations, 1);
}

TEST(AsyncStream, MovingTheConsumerKeepsTheSubscription) {
    int terminations = 0;
    auto [stream, continuation] = AsyncStream<int>::make();
    continuation.onTermination([&] { ++terminations; });
    AsyncStream<int> moved = std::move(stream);
    EXPECT_EQ(terminations, 0);
    continuation.yield(3);
    EXPECT_EQ(moved.next(), 3);
}

}  // namespace
}  // namespace screenweaver
