#include "DisplayKit/ChangeDebouncer.hpp"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace screenweaver {

ChangeDebouncer::ChangeDebouncer(Clock::Duration interval, SnapshotProvider snapshotProvider,
                                 const Clock& clock)
    : interval_(interval),
      snapshotProvider_(std::move(snapshotProvider)),
      broadcaster_(TopologyBroadcaster::make()),
      clock_(clock),
      timer_([this] { runTimer(); }) {}

ChangeDebouncer::~ChangeDebouncer() {
    stop_.requestStop();
    timer_.join();
}

void ChangeDebouncer::signal() {
    bool wasIdle = false;
    {
        std::scoped_lock lock{lock_};
        if (generation_ == std::numeric_limits<std::int64_t>::max()) {
            std::fputs("fatal error: reconfiguration generation counter overflowed\n", stderr);
            std::abort();
        }
        ++generation_;
        burstInFlight_ = true;
        wasIdle = !deadline_.has_value();
        deadline_ = clock_.now() + interval_;
    }
    // While the timer thread sleeps towards an earlier deadline it needs no wake-up: on waking it
    // sees the generation moved and sleeps on towards this later one.
    if (wasIdle) {
        burstBegan_.notify_one();
    }
}

bool ChangeDebouncer::burstInFlight() const {
    std::scoped_lock lock{lock_};
    return burstInFlight_;
}

void ChangeDebouncer::runTimer() {
    const StopToken stop = stop_.token();
    std::unique_lock lock{lock_};
    for (;;) {
        waitUntilReadyOrStopped(burstBegan_, lock, stop, [&] { return deadline_.has_value(); });
        // The wait ends with a deadline set, or on the stop request that ends the thread.
        if (stop.stopRequested() || !deadline_) {
            return;
        }
        const Clock::Instant deadline = *deadline_;
        const std::int64_t generation = generation_;
        lock.unlock();
        const bool slept = clock_.sleepUntil(deadline, stop);
        lock.lock();
        if (!slept || stop.stopRequested()) {
            return;
        }
        if (generation_ != generation) {
            continue;  // a later signal owns the burst; sleep on towards its deadline
        }
        burstInFlight_ = false;
        deadline_.reset();
        lock.unlock();
        if (auto topology = snapshotProvider_()) {
            broadcaster_->broadcast(*topology);
        }
        lock.lock();
    }
}

}  // namespace screenweaver
