#include "SelfAdvancingClock.hpp"

#include <algorithm>

namespace screenweaver::simulation {

SelfAdvancingClock::SelfAdvancingClock(Instant start) : now_(start) {}

Clock::Instant SelfAdvancingClock::now() const {
    const std::scoped_lock lock{mutex_};
    return now_;
}

bool SelfAdvancingClock::sleepUntil(Instant deadline, const StopToken& stop) const {
    if (stop.stopRequested()) {
        return false;
    }
    const std::scoped_lock lock{mutex_};
    now_ = std::max(now_, deadline);
    return true;
}

}  // namespace screenweaver::simulation
