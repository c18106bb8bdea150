#include "DisplayKit/DisplaySettleWaiter.hpp"

#include <thread>

namespace screenweaver {

DisplaySettleWaiter::DisplaySettleWaiter(AsyncStream<DisplayTopology> changes,
                                         SettledSnapshot settledSnapshot, Clock::Duration timeout,
                                         const Clock& clock)
    : changes_(std::move(changes)),
      settledSnapshot_(std::move(settledSnapshot)),
      timeout_(timeout),
      clock_(clock) {}

std::optional<DisplayTopology> DisplaySettleWaiter::firstSettledTopology(const Test& test,
                                                                         const StopToken& stop) {
    if (auto topology = settledSnapshot_(); topology && test(*topology)) {
        return topology;
    }
    // The race: the stream wait below and a timeout thread share one local stop. Whichever ends
    // first ends the other; the caller's stop ends both.
    const StopSource race;
    const StopCallback forwardCallerStop{stop, [&race] { race.requestStop(); }};
    const Clock::Instant deadline = clock_.now() + timeout_;
    std::thread timeout{[this, &race, deadline] {
        clock_.sleepUntil(deadline, race.token());
        race.requestStop();
    }};
    auto topology = firstMatchingEvent(test, race.token());
    race.requestStop();
    timeout.join();
    return topology;
}

std::optional<DisplayTopology> DisplaySettleWaiter::firstMatchingEvent(const Test& test,
                                                                       const StopToken& stop) {
    for (;;) {
        std::optional<DisplayTopology> topology = changes_.next(stop);
        if (!topology || test(*topology)) {
            return topology;
        }
    }
}

}  // namespace screenweaver
