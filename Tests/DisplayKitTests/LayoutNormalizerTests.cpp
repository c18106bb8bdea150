#include <gtest/gtest.h>

#include "DisplayKit/LayoutNormalizer.hpp"

namespace screenweaver {
namespace {

LiveDisplay display(std::uint32_t id, Rect bounds, bool isMain) {
    LiveDisplay live;
    live.displayID = id;
    live.ref = DisplayRef::physical("display-" + std::to_string(id));
    live.bounds = bounds;
    live.isMain = isMain;
    return live;
}

TEST(LayoutNormalizer, MovesTheMainDisplayToTheOrigin) {
    const std::vector<DisplayPlacement> placements{{1, {-100, 50}}, {2, {1820, 50.5}}};
    const std::vector<DisplayPlacement> expected{{1, {0, 0}}, {2, {1920, 0.5}}};
    EXPECT_EQ(LayoutNormalizer::normalized(placements, 1), expected);
}

TEST(LayoutNormalizer, UsesTheFirstPlacementOfTheMainDisplay) {
    const std::vector<DisplayPlacement> placements{{2, {10, 10}}, {1, {5, 0}}, {1, {7, 7}}};
    const std::vector<DisplayPlacement> expected{{2, {5, 10}}, {1, {0, 0}}, {1, {2, 7}}};
    EXPECT_EQ(LayoutNormalizer::normalized(placements, 1), expected);
}

TEST(LayoutNormalizer, ReturnsTheInputWhenNoPlacementCarriesTheMainID) {
    const std::vector<DisplayPlacement> placements{{1, {-100, 50}}, {2, {1820, 50}}};
    EXPECT_EQ(LayoutNormalizer::normalized(placements, 9), placements);
    EXPECT_EQ(LayoutNormalizer::normalized({}, 1), std::vector<DisplayPlacement>{});
}

TEST(LayoutNormalizer, DoesNotRound) {
    const std::vector<DisplayPlacement> placements{{1, {0.25, 0}}, {2, {1920.5, 0}}};
    const std::vector<DisplayPlacement> expected{{1, {0, 0}}, {2, {1920.25, 0}}};
    EXPECT_EQ(LayoutNormalizer::normalized(placements, 1), expected);
}

TEST(LayoutNormalizer, TellsWhetherTheMainDisplaySitsAtTheOrigin) {
    EXPECT_TRUE(LayoutNormalizer::isNormalized({{2, {5, 5}}, {1, {0, 0}}}, 1));
    EXPECT_FALSE(LayoutNormalizer::isNormalized({{1, {0, 0.5}}}, 1));
    EXPECT_FALSE(LayoutNormalizer::isNormalized({{1, {0, 0}}, {1, {3, 3}}}, 2))
        << "no placement for the main ID";
    EXPECT_FALSE(LayoutNormalizer::isNormalized({}, 1));
    EXPECT_FALSE(LayoutNormalizer::isNormalized({{1, {3, 3}}, {1, {0, 0}}}, 1))
        << "only the first placement counts";
}

TEST(LayoutNormalizer, TranslatesByMinusTheOffset) {
    const std::vector<DisplayPlacement> placements{{3, {10, 20}}, {4, {-5, 0}}};
    const std::vector<DisplayPlacement> expected{{3, {9, 22}}, {4, {-6, 2}}};
    EXPECT_EQ(LayoutNormalizer::detail::translated(placements, {1, -2}), expected);
    EXPECT_EQ(LayoutNormalizer::detail::translated(placements, {0, 0}), placements);
}

TEST(LayoutNormalizer, CapturesPlacementsRelativeToTheMainDisplay) {
    const DisplayTopology topology{
        {display(5, {{-1280, 0}, {1280, 800}}, false), display(1, {{100, 100}, {1920, 1080}}, true)}};
    const std::vector<DisplayPlacement> expected{{5, {-1380, -100}}, {1, {0, 0}}};
    EXPECT_EQ(LayoutNormalizer::capture(topology), expected);
}

TEST(LayoutNormalizer, CapturesPlacementsAsReadWithoutAMainDisplay) {
    const DisplayTopology topology{
        {display(5, {{-1280, 0}, {1280, 800}}, false), display(1, {{100, 100}, {1920, 1080}}, false)}};
    const std::vector<DisplayPlacement> expected{{5, {-1280, 0}}, {1, {100, 100}}};
    EXPECT_EQ(LayoutNormalizer::capture(topology), expected);
    EXPECT_EQ(LayoutNormalizer::capture({}), std::vector<DisplayPlacement>{});
}

}  // namespace
}  // namespace screenweaver
