#pragma once

#include <functional>
#include <optional>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// Finds the first topology, taken while no reconfiguration burst is in flight, that passes a
/// test, racing the published topologies against a timeout after trying an immediate snapshot.
/// Used once: the wait consumes its subscription.
class DisplaySettleWaiter {
public:
    /// A snapshot taken now, or nothing while a burst is in flight or when it cannot be read.
    using SettledSnapshot = std::function<std::optional<DisplayTopology>()>;
    using Test = std::function<bool(const DisplayTopology&)>;

    /// `changes` is a fresh subscription to the broadcaster, so topologies published between
    /// subscribing and waiting are buffered and still seen. Waits on `clock`, which must outlive
    /// the waiter.
    DisplaySettleWaiter(AsyncStream<DisplayTopology> changes, SettledSnapshot settledSnapshot,
                        Clock::Duration timeout, const Clock& clock);

    /// The immediate settled snapshot when it passes `test` (returned without any waiting);
    /// otherwise the first published topology that passes, or nothing when `timeout` passes first,
    /// the subscription ends, or `stop` is requested.
    [[nodiscard]] std::optional<DisplayTopology> firstSettledTopology(const Test& test,
                                                                      const StopToken& stop = {});

private:
    std::optional<DisplayTopology> firstMatchingEvent(const Test& test, const StopToken& stop);

    AsyncStream<DisplayTopology> changes_;
    SettledSnapshot settledSnapshot_;
    Clock::Duration timeout_;
    const Clock& clock_;
};

}  // namespace screenweaver
