#include <gtest/gtest.h>
#include <unordered_set>

#include "VirtualDisplayKit/LiveDisplaySnapshot.hpp"

namespace screenweaver {
namespace {

TEST(LiveDisplaySnapshot, EqualSnapshotsHashAlikeAndEveryFieldTellsThemApart) {
    const LiveDisplaySnapshot snapshot{.displayID = 5,
                                       .vendorNumber = 0x5357,
                                       .serialNumber = 9,
                                       .mirrorSource = std::nullopt,
                                       .pixelWidth = 5120,
                                       .pixelHeight = 1440};
    EXPECT_EQ(std::hash<LiveDisplaySnapshot>{}(snapshot), std::hash<LiveDisplaySnapshot>{}(snapshot));
    auto mirrored = snapshot;
    mirrored.mirrorSource = 0;
    EXPECT_NE(snapshot, mirrored) << "mirroring display 0 is not the same as mirroring none";
    auto taller = snapshot;
    taller.pixelHeight = 1441;
    const std::unordered_set<LiveDisplaySnapshot> set{snapshot, snapshot, mirrored, taller};
    EXPECT_EQ(set.size(), 3U);
}

}  // namespace
}  // namespace screenweaver
