#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <set>

#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// The time line of the continuous monotonic clock: it never goes back and keeps counting while the
/// machine sleeps (CLOCK_BOOTTIME on Linux, CLOCK_MONOTONIC on macOS). It only names the time line;
/// code reads time through a `Clock`, never through `now()` here, so that tests can drive it.
struct ContinuousTimeline {
    using rep = std::int64_t;
    using period = std::nano;
    using duration = std::chrono::nanoseconds;
    using time_point = std::chrono::time_point<ContinuousTimeline>;
    static constexpr bool is_steady = true;
    static time_point now() noexcept;
};

/// Where every timed behaviour of the system gets its time and does its waiting: verification
/// deadlines, poll intervals, quiet periods and settle timeouts. Safe to use from any thread.
class Clock {
public:
    using Duration = std::chrono::nanoseconds;
    using Instant = ContinuousTimeline::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;

    /// Blocks until `deadline` has been reached or `stop` is requested, whichever comes first.
    /// Returns true when the deadline was reached, false when the wait was stopped early.
    virtual bool sleepUntil(Instant deadline, const StopToken& stop) const = 0;

    /// Sleeps for `duration` from now; same result as `sleepUntil`.
    bool sleepFor(Duration duration, const StopToken& stop) const;
};

/// The machine's continuous clock.
class ContinuousClock final : public Clock {
public:
    /// One shared instance; the clock has no state.
    static const ContinuousClock& shared();

    [[nodiscard]] Instant now() const override;
    bool sleepUntil(Instant deadline, const StopToken& stop) const override;
};

/// A clock whose time moves only when a test advances it. Sleepers wake as soon as an advance
/// reaches their deadline, so a six-second timeout is tested in microseconds and no test depends
/// on the speed of the machine.
class ManualClock final : public Clock {
public:
    /// Starts at `start`; the default keeps clear of the time line's origin.
    explicit ManualClock(Instant start = Instant{std::chrono::hours{1}});

    [[nodiscard]] Instant now() const override;
    bool sleepUntil(Instant deadline, const StopToken& stop) const override;

    /// Moves time forward by `duration` and wakes every sleeper whose deadline has now passed.
    void advance(Duration duration);

    /// Moves time forward to `instant` (no change if it is not in the future).
    void advanceTo(Instant instant);

    /// How many threads are asleep on this clock right now.
    [[nodiscard]] std::size_t sleeperCount() const;

    /// Blocks (in real time) until at least `count` threads are asleep on this clock, so a test
    /// can advance time only after a background thread has reached its wait.
    void waitForSleepers(std::size_t count) const;

    /// The earliest deadline any sleeper is waiting for, or the current time when nobody sleeps.
    [[nodiscard]] Instant nextDeadline() const;

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    Instant now_;
    // One entry per sleeping thread: its deadline.
    mutable std::multiset<Instant> sleeperDeadlines_;
};

}  // namespace screenweaver
