#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// Hands every published topology to every live subscription. Subscriptions buffer without bound,
/// so a slow consumer never makes `broadcast` wait; a subscription ends when its consumer destroys
/// its stream. Safe to use from any thread.
///
/// Always owned by a `std::shared_ptr` (see `make`): a subscription's termination handler holds
/// the broadcaster weakly, so a stream may outlive it.
class TopologyBroadcaster : public std::enable_shared_from_this<TopologyBroadcaster> {
public:
    [[nodiscard]] static std::shared_ptr<TopologyBroadcaster> make();

    /// Finishes every live subscription, so that no consumer waits for a topology that can no
    /// longer come.
    ~TopologyBroadcaster();
    TopologyBroadcaster(const TopologyBroadcaster&) = delete;
    TopologyBroadcaster& operator=(const TopologyBroadcaster&) = delete;

    /// A new subscription. It receives the topologies broadcast after it was made; nothing is
    /// replayed.
    [[nodiscard]] AsyncStream<DisplayTopology> stream();

    /// Delivers `topology` to every subscription that exists now. The consumers are fed outside
    /// the lock, so a termination handler that runs meanwhile cannot deadlock with it.
    void broadcast(const DisplayTopology& topology);

    [[nodiscard]] std::size_t subscriberCountForTesting() const;

private:
    TopologyBroadcaster() = default;

    std::unordered_map<UUID, AsyncStream<DisplayTopology>::Continuation> subscribers_;
    // Guards `subscribers_`; never held together with the debouncer's lock.
    mutable std::mutex lock_;
};

}  // namespace screenweaver
