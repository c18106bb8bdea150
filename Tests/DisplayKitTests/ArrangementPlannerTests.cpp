#include <gtest/gtest.h>

#include "DisplayKit/ArrangementPlanner.hpp"

namespace screenweaver {
namespace {

LiveDisplay display(std::uint32_t id, Rect bounds) {
    LiveDisplay live;
    live.displayID = id;
    live.ref = DisplayRef::physical("display-" + std::to_string(id));
    live.bounds = bounds;
    return live;
}

DisplayRef unknownRef(std::uint32_t id) {
    return DisplayRef::physical("unknown-" + std::to_string(id));
}

const DisplayTopology twoDisplays{
    {display(1, {{0, 0}, {1920, 1080}}), display(2, {{-1280, 0}, {1280, 800}})}};

TEST(ArrangementPlanner, ReturnsTheCurrentBoundsForAnEmptyPlan) {
    const FrameMap expected{{1, {{0, 0}, {1920, 1080}}}, {2, {{-1280, 0}, {1280, 800}}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames({}, twoDisplays, unknownRef), expected);
}

TEST(ArrangementPlanner, ResizesByModeChangesAndMovesByPlacements) {
    LayoutPlan plan;
    plan.placements = {{2, {1920, 0}}};
    plan.modeChanges = {{1, {3024, 1964, 1512, 982, 120.0}}};
    const FrameMap expected{{1, {{0, 0}, {1512, 982}}}, {2, {{1920, 0}, {1280, 800}}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames(plan, twoDisplays, unknownRef), expected);
}

TEST(ArrangementPlanner, LetsALaterEntryForTheSameDisplayWin) {
    LayoutPlan plan;
    plan.placements = {{2, {1920, 0}}, {2, {1920, 0.5}}};
    plan.modeChanges = {{2, {2560, 1600, 1280, 800, 60.0}}, {2, {1920, 1200, 1920, 1200, 60.0}}};
    plan.unmirror = {1, 2};
    const FrameMap expected{{1, {{0, 0}, {1920, 1080}}}, {2, {{1920, 0.5}, {1920, 1200}}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames(plan, twoDisplays, unknownRef), expected);
}

TEST(ArrangementPlanner, KeepsTheFirstOfTwoDisplaysWithOneID) {
    const DisplayTopology topology{{display(1, {{0, 0}, {1920, 1080}}), display(1, {{5, 5}, {10, 10}})}};
    const FrameMap expected{{1, {{0, 0}, {1920, 1080}}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames({}, topology, unknownRef), expected);
}

TEST(ArrangementPlanner, RejectsAPlacementForADisplayThatIsNotOnline) {
    LayoutPlan plan;
    plan.placements = {{2, {1920, 0}}, {9, {0, 1080}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames(plan, twoDisplays, unknownRef).error(),
              DisplayError::displayNotFound(DisplayRef::physical("unknown-9")));
}

TEST(ArrangementPlanner, RejectsAModeChangeForADisplayThatIsNotOnline) {
    LayoutPlan plan;
    plan.modeChanges = {{8, {1920, 1080, 1920, 1080, 60.0}}};
    plan.placements = {{9, {0, 1080}}};
    EXPECT_EQ(ArrangementPlanner::plannedFrames(plan, twoDisplays, unknownRef).error(),
              DisplayError::displayNotFound(DisplayRef::physical("unknown-8")))
        << "mode changes are looked at before placements";
}

TEST(ArrangementPlanner, RejectsAnEmptyTopologyBeforeLookingAtThePlan) {
    LayoutPlan plan;
    plan.placements = {{9, {0, 0}}};
    bool asked = false;
    const auto result = ArrangementPlanner::plannedFrames(plan, {}, [&](std::uint32_t id) {
        asked = true;
        return unknownRef(id);
    });
    EXPECT_EQ(result.error(), DisplayError::wouldLeaveZeroDisplays());
    EXPECT_FALSE(asked);
}

TEST(ArrangementPlanner, NamesEveryReferencedDisplayOnce) {
    LayoutPlan plan;
    plan.placements = {{3, {0, 0}}, {1, {0, 0}}};
    plan.modeChanges = {{4, {}}};
    plan.unmirror = {3, 5};
    EXPECT_EQ(ArrangementPlanner::referencedDisplayIDs(plan),
              (std::unordered_set<std::uint32_t>{1, 3, 4, 5}));
    EXPECT_EQ(ArrangementPlanner::referencedDisplayIDs({}), std::unordered_set<std::uint32_t>{});
}

}  // namespace
}  // namespace screenweaver
