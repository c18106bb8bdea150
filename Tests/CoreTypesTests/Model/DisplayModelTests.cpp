#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/LayoutPlan.hpp"
#include "CoreTypes/Model/LiveDisplay.hpp"

namespace screenweaver {
namespace {

LiveDisplay display(std::uint32_t displayID, bool isMain) {
    return LiveDisplay{.displayID = displayID,
                       .ref = DisplayRef::physical("display-" + std::to_string(displayID)),
                       .vendorNumber = 1552,
                       .modelNumber = 41001,
                       .serialNumber = 7,
                       .isMain = isMain,
                       .bounds = Rect{{0, 0}, {1920, 1080}}};
}

TEST(DisplayModeInfo, IsHiDPIWhenBothAxesHaveFewerPointsThanPixels) {
    EXPECT_TRUE((DisplayModeInfo{3840, 2160, 1920, 1080, 60.0}).isHiDPI());
}

TEST(DisplayModeInfo, IsNotHiDPIWhenPointsEqualPixels) {
    EXPECT_FALSE((DisplayModeInfo{1920, 1080, 1920, 1080, 60.0}).isHiDPI());
}

TEST(DisplayModeInfo, IsHiDPIWhenOneAxisSuffices) {
    EXPECT_TRUE((DisplayModeInfo{2880, 1800, 2880, 900, 60.0}).isHiDPI());
}

TEST(DisplayModeInfo, IsNotHiDPIWithMorePointsThanPixels) {
    EXPECT_FALSE((DisplayModeInfo{1280, 720, 2560, 1440, 60.0}).isHiDPI());
}

TEST(DisplayTopology, HasNoMainWhenNoDisplayIsFlaggedMain) {
    const DisplayTopology topology{{display(1, false), display(2, false)}};
    EXPECT_FALSE(topology.main().has_value());
}

TEST(DisplayTopology, MainIsTheFirstOfTwoDisplaysFlaggedMain) {
    const DisplayTopology topology{{display(1, false), display(2, true), display(3, true)}};
    ASSERT_TRUE(topology.main().has_value());
    EXPECT_EQ(topology.main()->displayID, 2U);
}

TEST(DisplayTopology, EqualityIncludesOrder) {
    EXPECT_NE((DisplayTopology{{display(1, true), display(2, false)}}),
              (DisplayTopology{{display(2, false), display(1, true)}}));
}

TEST(LiveDisplay, DisplaysDifferingOnlyInSleepAreUnequal) {
    LiveDisplay asleep = display(1, true);
    asleep.isAsleep = true;
    EXPECT_NE(asleep, display(1, true));
}

TEST(LiveDisplay, IsOurVirtualDisplayByVendorNumberWhateverTheSerial) {
    LiveDisplay ours = display(1, true);
    ours.vendorNumber = 0x5357;
    for (const std::uint32_t serial : {0U, 1U, 0x4E7153E5U, 0xFFFFFFFFU}) {
        ours.serialNumber = serial;
        EXPECT_TRUE(ours.isOurVirtualDisplay()) << serial;
    }
    EXPECT_FALSE(display(1, true).isOurVirtualDisplay());
}

TEST(LiveDisplay, NameAndCurrentModeDefaultToAbsent) {
    const LiveDisplay live = display(1, true);
    EXPECT_FALSE(live.name.has_value());
    EXPECT_FALSE(live.currentMode.has_value());
}

TEST(LiveDisplay, BoundsCompareAsStandardisedRectangles) {
    LiveDisplay flipped = display(1, true);
    flipped.bounds = Rect{{1920, 1080}, {-1920, -1080}};
    EXPECT_EQ(flipped, display(1, true));
    EXPECT_EQ(std::hash<LiveDisplay>{}(flipped), std::hash<LiveDisplay>{}(display(1, true)));
}

TEST(LayoutPlan, PlansWithTheSamePlacementsInAnotherOrderAreUnequal) {
    const DisplayPlacement first{1, {0, 0}};
    const DisplayPlacement second{2, {1920, 0}};
    EXPECT_NE((LayoutPlan{{first, second}, {}, {}}), (LayoutPlan{{second, first}, {}, {}}));
    EXPECT_EQ((LayoutPlan{{first, second}, {}, {}}), (LayoutPlan{{first, second}, {}, {}}));
}

TEST(ModeChange, EqualityAndHashingCoverDisplayAndMode) {
    const ModeChange change{4, {3840, 2160, 1920, 1080, 60.0}};
    EXPECT_EQ(change, (ModeChange{4, {3840, 2160, 1920, 1080, 60.0}}));
    EXPECT_NE(change, (ModeChange{5, {3840, 2160, 1920, 1080, 60.0}}));
    EXPECT_NE(change, (ModeChange{4, {3840, 2160, 1920, 1080, 59.94}}));
    EXPECT_EQ(std::hash<ModeChange>{}(change),
              std::hash<ModeChange>{}(ModeChange{4, {3840, 2160, 1920, 1080, 60.0}}));
}

}  // namespace
}  // namespace screenweaver
