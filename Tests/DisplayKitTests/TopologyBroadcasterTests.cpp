#include <gtest/gtest.h>

#include "DisplayKit/TopologyBroadcaster.hpp"

namespace screenweaver {
namespace {

DisplayTopology topologyWith(std::uint32_t id) {
    LiveDisplay display;
    display.displayID = id;
    display.ref = DisplayRef::physical("display-" + std::to_string(id));
    return DisplayTopology{{display}};
}

TEST(TopologyBroadcaster, DeliversEachBroadcastToEverySubscriber) {
    const auto broadcaster = TopologyBroadcaster::make();
    auto first = broadcaster->stream();
    auto second = broadcaster->stream();
    broadcaster->broadcast(topologyWith(1));
    broadcaster->broadcast(topologyWith(2));
    EXPECT_EQ(first.tryNext(), topologyWith(1));
    EXPECT_EQ(first.tryNext(), topologyWith(2));
    EXPECT_EQ(second.tryNext(), topologyWith(1));
    EXPECT_EQ(second.tryNext(), topologyWith(2));
    EXPECT_EQ(first.tryNext(), std::nullopt);
}

TEST(TopologyBroadcaster, ReplaysNothingToANewSubscriber) {
    const auto broadcaster = TopologyBroadcaster::make();
    broadcaster->broadcast(topologyWith(1));
    auto late = broadcaster->stream();
    EXPECT_EQ(late.tryNext(), std::nullopt);
    broadcaster->broadcast(topologyWith(2));
    EXPECT_EQ(late.tryNext(), topologyWith(2));
}

TEST(TopologyBroadcaster, RemovesASubscriberThatStopsListening) {
    const auto broadcaster = TopologyBroadcaster::make();
    auto staying = broadcaster->stream();
    {
        auto leaving = broadcaster->stream();
        EXPECT_EQ(broadcaster->subscriberCountForTesting(), 2U);
    }
    EXPECT_EQ(broadcaster->subscriberCountForTesting(), 1U);
    broadcaster->broadcast(topologyWith(3));
    EXPECT_EQ(staying.tryNext(), topologyWith(3));
}

TEST(TopologyBroadcaster, LetsAStreamOutliveIt) {
    auto broadcaster = TopologyBroadcaster::make();
    auto stream = broadcaster->stream();
    broadcaster->broadcast(topologyWith(4));
    broadcaster.reset();
    EXPECT_EQ(stream.next(), topologyWith(4)) << "what was buffered is still delivered";
    EXPECT_EQ(stream.next(), std::nullopt) << "then the subscription has ended";
}

TEST(TopologyBroadcaster, BuffersWithoutBoundForASlowConsumer) {
    const auto broadcaster = TopologyBroadcaster::make();
    auto stream = broadcaster->stream();
    for (std::uint32_t id = 0; id < 1000; ++id) {
        broadcaster->broadcast(topologyWith(id));
    }
    for (std::uint32_t id = 0; id < 1000; ++id) {
        ASSERT_EQ(stream.tryNext(), topologyWith(id));
    }
}

}  // namespace
}  // namespace screenweaver
