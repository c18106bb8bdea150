#pragma once

#include <mutex>

#include "CoreTypes/Clock.hpp"

namespace screenweaver::simulation {

/// A clock that moves only when someone sleeps on it, and then straight to the sleeper's deadline.
/// Waits take no real time, yet everything timed happens in the order it would on a real clock: a
/// display that appears 200 ms late is seen by the fourth 50 ms poll. It drives a single waiting
/// thread (the simulated service, a test's creation); with several sleepers at once each would
/// jump time on its own, which is what `ManualClock` is for.
class SelfAdvancingClock final : public Clock {
public:
    explicit SelfAdvancingClock(Instant start = Instant{std::chrono::hours{1}});

    [[nodiscard]] Instant now() const override;

    /// Jumps to `deadline` (if it is ahead) and returns true at once; false, without moving time,
    /// when `stop` has been requested.
    bool sleepUntil(Instant deadline, const StopToken& stop) const override;

private:
    mutable std::mutex mutex_;
    mutable Instant now_;
};

}  // namespace screenweaver::simulation
