#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/StopToken.hpp"
#include "DisplayKit/TopologyBroadcaster.hpp"

namespace screenweaver {

/// Turns a burst of reconfiguration callbacks into one published topology. Every `signal()`
/// restarts the quiet period that ends a burst; once `interval` has passed since the last signal,
/// one snapshot is taken and broadcast. A burst that never pauses for `interval` publishes nothing
/// until it does.
///
///     signal  signal     signal
///       |       |          |<------ interval ------>| snapshot, broadcast
///       burstInFlight = true ....................... false
///
/// One timer thread per debouncer serves every burst: `signal()` only bumps the generation and
/// moves the deadline under the lock, so it never blocks on a snapshot and never starts a thread.
/// The timer thread publishes only when the generation it slept for is still the latest, takes the
/// snapshot and broadcasts outside the lock, and so never holds this lock together with the
/// broadcaster's. Safe to use from any thread.
class ChangeDebouncer {
public:
    /// Produces the topology to publish, or nothing when it cannot be read; called on the timer
    /// thread.
    using SnapshotProvider = std::function<std::optional<DisplayTopology>()>;

    /// Waits on `clock`, which must outlive the debouncer.
    ChangeDebouncer(Clock::Duration interval, SnapshotProvider snapshotProvider, const Clock& clock);
    /// Stops the timer thread; a burst still in flight publishes nothing.
    ~ChangeDebouncer();
    ChangeDebouncer(const ChangeDebouncer&) = delete;
    ChangeDebouncer& operator=(const ChangeDebouncer&) = delete;

    /// Records one reconfiguration callback and returns at once.
    void signal();

    /// True from a signal until the quiet period after the last signal has ended.
    [[nodiscard]] bool burstInFlight() const;

    [[nodiscard]] TopologyBroadcaster& broadcaster() const { return *broadcaster_; }

private:
    void runTimer();

    // Reconfiguration callbacks seen; the latest one owns the burst.
    std::int64_t generation_ = 0;
    bool burstInFlight_ = false;
    // When the quiet period of the latest signal ends; absent while no burst waits for it.
    std::optional<Clock::Instant> deadline_;
    // Guards `generation_`, `burstInFlight_` and `deadline_`.
    mutable std::mutex lock_;
    // Wakes the idle timer thread when a burst begins.
    std::condition_variable burstBegan_;
    Clock::Duration interval_;
    SnapshotProvider snapshotProvider_;
    std::shared_ptr<TopologyBroadcaster> broadcaster_;
    const Clock& clock_;
    StopSource stop_;
    std::thread timer_;
};

}  // namespace screenweaver
