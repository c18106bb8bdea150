#include "CoreTypes/Clock.hpp"

#include <time.h>

namespace screenweaver {

ContinuousTimeline::time_point ContinuousTimeline::now() noexcept {
#if defined(__APPLE__)
    constexpr clockid_t continuousClock = CLOCK_MONOTONIC;
#else
    constexpr clockid_t continuousClock = CLOCK_BOOTTIME;
#endif
    timespec spec{};
    clock_gettime(continuousClock, &spec);
    return time_point{std::chrono::seconds{spec.tv_sec} + std::chrono::nanoseconds{spec.tv_nsec}};
}

bool Clock::sleepFor(Duration duration, const StopToken& stop) const {
    return sleepUntil(now() + duration, stop);
}

const ContinuousClock& ContinuousClock::shared() {
    static const ContinuousClock clock;
    return clock;
}

Clock::Instant ContinuousClock::now() const {
    return ContinuousTimeline::now();
}

bool ContinuousClock::sleepUntil(Instant deadline, const StopToken& stop) const {
    std::mutex mutex;
    std::condition_variable wakeUp;
    std::unique_lock lock{mutex};
    for (;;) {
        const auto remaining = deadline - now();
        if (remaining <= Duration::zero()) {
            return true;
        }
        // Waits on the steady clock, then re-reads the continuous one: a system sleep in between only
        // shortens the rest of the wait.
        const auto steadyDeadline = std::chrono::steady_clock::now() + remaining;
        waitUntilReadyStoppedOrTimedOut(wakeUp, lock, stop, steadyDeadline, [] { return false; });
        if (stop.stopRequested()) {
            return false;
        }
    }
}

ManualClock::ManualClock(Instant start) : now_(start) {}

Clock::Instant ManualClock::now() const {
    std::scoped_lock lock{mutex_};
    return now_;
}

bool ManualClock::sleepUntil(Instant deadline, const StopToken& stop) const {
    std::unique_lock lock{mutex_};
    if (now_ >= deadline) {
        return true;
    }
    const auto entry = sleeperDeadlines_.insert(deadline);
    changed_.notify_all();
    const bool reached = waitUntilReadyOrStopped(changed_, lock, stop, [&] { return now_ >= deadline; });
    sleeperDeadlines_.erase(entry);
    changed_.notify_all();
    return reached;
}

void ManualClock::advance(Duration duration) {
    {
        std::scoped_lock lock{mutex_};
        now_ += duration;
    }
    changed_.notify_all();
}

void ManualClock::advanceTo(Instant instant) {
    {
        std::scoped_lock lock{mutex_};
        if (instant > now_) {
            now_ = instant;
        }
    }
    changed_.notify_all();
}

std::size_t ManualClock::sleeperCount() const {
    std::scoped_lock lock{mutex_};
    return sleeperDeadlines_.size();
}

void ManualClock::waitForSleepers(std::size_t count) const {
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [&] { return sleeperDeadlines_.size() >= count; });
}

Clock::Instant ManualClock::nextDeadline() const {
    std::scoped_lock lock{mutex_};
    return sleeperDeadlines_.empty() ? now_ : *sleeperDeadlines_.begin();
}

}  // namespace screenweaver
