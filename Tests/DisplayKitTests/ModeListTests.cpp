#include <gtest/gtest.h>

#include "DisplayKit/ModeList.hpp"

namespace screenweaver {
namespace {

DisplayModeInfo mode(std::int64_t pixelWidth, std::int64_t pixelHeight, std::int64_t pointWidth,
                     std::int64_t pointHeight, double refreshRate) {
    return {pixelWidth, pixelHeight, pointWidth, pointHeight, refreshRate};
}

TEST(ModeList, SortsByAreaThenRefreshAndKeepsTheFirstOfEqualModes) {
    const std::vector<DisplayModeInfo> modes{
        mode(1920, 1080, 1920, 1080, 60), mode(1920, 1080, 1920, 1080, 60), mode(3840, 2160, 3840, 2160, 30),
        mode(1920, 1080, 1920, 1080, 120)};
    const std::vector<DisplayModeInfo> expected{mode(3840, 2160, 3840, 2160, 30),
                                                mode(1920, 1080, 1920, 1080, 120),
                                                mode(1920, 1080, 1920, 1080, 60)};
    EXPECT_EQ(ModeList::normalized(modes), expected);
}

TEST(ModeList, PutsMorePointsFirstAmongEqualPixelsAndRefresh) {
    const std::vector<DisplayModeInfo> modes{mode(1920, 1080, 960, 540, 60),
                                             mode(1920, 1080, 1920, 1080, 60)};
    const std::vector<DisplayModeInfo> expected{mode(1920, 1080, 1920, 1080, 60),
                                                mode(1920, 1080, 960, 540, 60)};
    EXPECT_EQ(ModeList::normalized(modes), expected);
}

TEST(ModeList, BreaksRemainingTiesByPointHeight) {
    const std::vector<DisplayModeInfo> modes{mode(2000, 1000, 1000, 400, 60),
                                             mode(2000, 1000, 1000, 500, 60)};
    const std::vector<DisplayModeInfo> expected{mode(2000, 1000, 1000, 500, 60),
                                                mode(2000, 1000, 1000, 400, 60)};
    EXPECT_EQ(ModeList::normalized(modes), expected);
}

TEST(ModeList, KeepsTheInputOrderOfModesEqualInEveryKey) {
    // Same area, refresh and points, different pixel shapes: the sort keys cannot tell them apart.
    const std::vector<DisplayModeInfo> modes{mode(1000, 2000, 500, 500, 60), mode(2000, 1000, 500, 500, 60),
                                             mode(4000, 500, 500, 500, 60)};
    EXPECT_EQ(ModeList::normalized(modes), modes);
}

TEST(ModeList, TellsRefreshRatesApartExactly) {
    const std::vector<DisplayModeInfo> modes{mode(1920, 1080, 1920, 1080, 59.94),
                                             mode(1920, 1080, 1920, 1080, 60),
                                             mode(1920, 1080, 1920, 1080, 59.94)};
    const std::vector<DisplayModeInfo> expected{mode(1920, 1080, 1920, 1080, 60),
                                                mode(1920, 1080, 1920, 1080, 59.94)};
    EXPECT_EQ(ModeList::normalized(modes), expected);
}

TEST(ModeList, LeavesAnEmptyListEmpty) {
    EXPECT_EQ(ModeList::normalized({}), std::vector<DisplayModeInfo>{});
}

TEST(ModeListDeathTest, StopsOnAPixelAreaBeyondSixtyFourBits) {
    const std::vector<DisplayModeInfo> modes{mode(std::int64_t{1} << 40, std::int64_t{1} << 40, 1, 1, 60)};
    EXPECT_DEATH((void)ModeList::normalized(modes), "pixel area overflows");
}

}  // namespace
}  // namespace screenweaver
