#include "DisplayKit/TopologyBroadcaster.hpp"

#include <vector>

namespace screenweaver {

std::shared_ptr<TopologyBroadcaster> TopologyBroadcaster::make() {
    return std::shared_ptr<TopologyBroadcaster>{new TopologyBroadcaster};
}

TopologyBroadcaster::~TopologyBroadcaster() {
    // Nobody else can reach the map any more: the last owner is going away and every termination
    // handler finds its weak reference expired.
    for (const auto& [id, continuation] : subscribers_) {
        continuation.finish();
    }
}

AsyncStream<DisplayTopology> TopologyBroadcaster::stream() {
    auto [stream, continuation] = AsyncStream<DisplayTopology>::make();
    const UUID id = UUID::random();
    {
        std::scoped_lock lock{lock_};
        subscribers_.emplace(id, continuation);
    }
    continuation.onTermination([weakSelf = weak_from_this(), id] {
        if (const auto self = weakSelf.lock()) {
            std::scoped_lock lock{self->lock_};
            self->subscribers_.erase(id);
        }
    });
    return std::move(stream);
}

void TopologyBroadcaster::broadcast(const DisplayTopology& topology) {
    std::vector<AsyncStream<DisplayTopology>::Continuation> continuations;
    {
        std::scoped_lock lock{lock_};
        continuations.reserve(subscribers_.size());
        for (const auto& [id, continuation] : subscribers_) {
            continuations.push_back(continuation);
        }
    }
    for (const auto& continuation : continuations) {
        continuation.yield(topology);
    }
}

std::size_t TopologyBroadcaster::subscriberCountForTesting() const {
    std::scoped_lock lock{lock_};
    return subscribers_.size();
}

}  // namespace screenweaver
