#include <gtest/gtest.h>
#include <thread>

#include "CoreTypes/StopToken.hpp"

namespace screenweaver {
namespace {

TEST(StopToken, DefaultTokenCanNeverBeStopped) {
    const StopToken token;
    EXPECT_FALSE(token.stopPossible());
    EXPECT_FALSE(token.stopRequested());
}

TEST(StopSource, StopsEveryTokenItHandedOutOnce) {
    const StopSource source;
    const StopToken token = source.token();
    EXPECT_TRUE(token.stopPossible());
    EXPECT_FALSE(token.stopRequested());
    EXPECT_TRUE(source.requestStop());
    EXPECT_FALSE(source.requestStop());
    EXPECT_TRUE(token.stopRequested());
    EXPECT_TRUE(source.stopRequested());
}

TEST(StopCallback, RunsWhenStopIsRequested) {
    const StopSource source;
    int runs = 0;
    const StopCallback callback{source.token(), [&] { ++runs; }};
    EXPECT_EQ(runs, 0);
    source.requestStop();
    EXPECT_EQ(runs, 1);
}

TEST(StopCallback, RunsAtOnceWhenStopWasAlreadyRequested) {
    const StopSource source;
    source.requestStop();
    int runs = 0;
    const StopCallback callback{source.token(), [&] { ++runs; }};
    EXPECT_EQ(runs, 1);
}

TEST(StopCallback, DoesNotRunOnceDeregistered) {
    const StopSource source;
    int runs = 0;
    {
        const StopCallback callback{source.token(), [&] { ++runs; }};
    }
    source.requestStop();
    EXPECT_EQ(runs, 0);
}

TEST(WaitUntilReadyOrStopped, WakesAWaiterWhenStopIsRequestedFromAnotherThread) {
    std::mutex mutex;
    std::condition_variable condition;
    const StopSource source;
    std::thread stopper{[&] { source.requestStop(); }};
    std::unique_lock lock{mutex};
    EXPECT_FALSE(waitUntilReadyOrStopped(condition, lock, source.token(), [] { return false; }));
    EXPECT_TRUE(lock.owns_lock());
    lock.unlock();
    stopper.join();
}

TEST(WaitUntilReadyOrStopped, ReturnsOnceReady) {
    std::mutex mutex;
    std::condition_variable condition;
    bool ready = false;
    std::thread setter{[&] {
        {
            const std::scoped_lock lock{mutex};
            ready = true;
        }
        condition.notify_all();
    }};
    std::unique_lock lock{mutex};
    EXPECT_TRUE(waitUntilReadyOrStopped(condition, lock, StopSource{}.token(), [&] { return ready; }));
    lock.unlock();
    setter.join();
}

}  // namespace
}  // namespace screenweaver
