#include <gtest/gtest.h>

#include "DisplayKit/LayoutValidator.hpp"

namespace screenweaver {
namespace {

Rect frame(double x, double y, double width, double height) {
    return Rect{{x, y}, {width, height}};
}

DisplayError invalid(const char* reason) {
    return DisplayError::invalidLayout(reason);
}

TEST(LayoutValidator, AcceptsOneDisplayAtTheOrigin) {
    EXPECT_TRUE(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}}).has_value());
}

TEST(LayoutValidator, RejectsAnEmptyArrangement) {
    EXPECT_EQ(LayoutValidator::validate({}).error(), invalid("the arrangement contains no displays"));
}

TEST(LayoutValidator, RejectsAZeroWidthBeforeLookingAtTheOrigin) {
    EXPECT_EQ(LayoutValidator::validate({{7, frame(0, 0, 0, 1080)}}).error(),
              invalid("display 7 has an empty frame (0.0, 0.0, 0.0, 1080.0)"));
}

TEST(LayoutValidator, RejectsAnEmptyFrameBeforeAnUnusableOriginOfTheSameDisplay) {
    EXPECT_EQ(LayoutValidator::validate({{1, frame(3e9, 0, 0, 1080)}}).error(),
              invalid("display 1 has an empty frame (3000000000.0, 0.0, 0.0, 1080.0)"));
}

TEST(LayoutValidator, ChecksFramesInDisplayIDOrder) {
    EXPECT_EQ(LayoutValidator::validate({{2, frame(0, 0, 1920, 0)}, {1, frame(3e9, 0, 1920, 1080)}}).error(),
              invalid("display 1 has an unusable origin (3000000000.0, 0.0)"));
}

TEST(LayoutValidator, ChecksFramesBeforeLookingForTheDisplayAtTheOrigin) {
    EXPECT_EQ(LayoutValidator::validate({{1, frame(10, 0, 1920, 0)}}).error(),
              invalid("display 1 has an empty frame (10.0, 0.0, 1920.0, 0.0)"));
}

TEST(LayoutValidator, ChecksTheOriginBeforeOverlaps) {
    // Both at (0,0), so they also overlap: sharing the origin is what is reported.
    EXPECT_EQ(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(0, 0, 1920, 1080)}}).error(),
              invalid("displays [1, 2] share (0,0); exactly one may"));
}

TEST(LayoutValidator, ChecksOverlapsBeforeContiguity) {
    const FrameMap frames{
        {1, frame(0, 0, 1920, 1080)}, {2, frame(100, 100, 100, 100)}, {3, frame(5000, 0, 100, 100)}};
    EXPECT_EQ(LayoutValidator::validate(frames).error(), invalid("displays 1 and 2 overlap"));
}

TEST(LayoutValidator, RejectsANaNHeight) {
    EXPECT_EQ(LayoutValidator::validate({{3, frame(0, 0, 1920, std::nan(""))}}).error(),
              invalid("display 3 has an empty frame (0.0, 0.0, 1920.0, nan)"));
}

TEST(LayoutValidator, CountsANegativeSizeByItsMagnitude) {
    // Standardised, this frame covers (-1920, 0) to (0, 1080); its stored origin is (0, 0).
    EXPECT_TRUE(LayoutValidator::validate({{1, frame(0, 0, -1920, 1080)}}).has_value());
}

TEST(LayoutValidator, RejectsAnOriginBeyondThirtyTwoBits) {
    EXPECT_EQ(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(4294967296.0, 0, 10, 10)}})
                  .error(),
              invalid("display 2 has an unusable origin (4294967296.0, 0.0)"));
}

TEST(LayoutValidator, RejectsAnInfiniteOrigin) {
    EXPECT_EQ(LayoutValidator::validate({{1, frame(0, -INFINITY, 1920, 1080)}}).error(),
              invalid("display 1 has an unusable origin (0.0, -inf)"));
}

TEST(LayoutValidator, RejectsAThreeBillionOrigin) {
    EXPECT_EQ(
        LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {5, frame(0, 3e9, 1920, 1080)}}).error(),
        invalid("display 5 has an unusable origin (0.0, 3000000000.0)"));
}

TEST(LayoutValidator, AcceptsAnOriginThatRoundsIntoThirtyTwoBits) {
    // 2147483647.4 rounds to the largest signed 32-bit value; the display is isolated, nothing
    // else is wrong with it.
    EXPECT_EQ(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(2147483647.4, 0, 10, 10)}})
                  .error(),
              invalid("layout is not contiguous; isolated displays: [2]"));
    EXPECT_EQ(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(2147483647.5, 0, 10, 10)}})
                  .error(),
              invalid("display 2 has an unusable origin (2147483647.5, 0.0)"))
        << "half rounds away from zero";
}

TEST(LayoutValidator, RejectsAnArrangementWithNoDisplayAtTheOrigin) {
    EXPECT_EQ(LayoutValidator::validate({{1, frame(1, 0, 1920, 1080)}}).error(),
              invalid("no display at (0,0); the main display must sit there"));
}

TEST(LayoutValidator, RejectsTwoDisplaysAtTheOriginListingTheirIDsAscending) {
    EXPECT_EQ(LayoutValidator::validate({{4, frame(0, 0, 1920, 1080)}, {1, frame(0, 0, 1280, 800)}}).error(),
              invalid("displays [1, 4] share (0,0); exactly one may"));
}

TEST(LayoutValidator, AcceptsADisplayStartingAtTheRightEdgeOfTheMainDisplay) {
    EXPECT_TRUE(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(1920, 0, 1280, 800)}})
                    .has_value());
}

TEST(LayoutValidator, RejectsADisplayStartingOnePointInsideTheMainDisplay) {
    EXPECT_EQ(
        LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(1919, 0, 1280, 800)}}).error(),
        invalid("displays 1 and 2 overlap"));
}

TEST(LayoutValidator, ReportsTheFirstOverlappingPairInIDOrder) {
    const FrameMap frames{
        {9, frame(0, 0, 1920, 1080)}, {3, frame(100, 100, 100, 100)}, {5, frame(150, 150, 100, 100)}};
    EXPECT_EQ(LayoutValidator::validate(frames).error(), invalid("displays 3 and 5 overlap"));
}

TEST(LayoutValidator, RejectsADisplayOnePointAwayAsIsolated) {
    EXPECT_EQ(
        LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(1921, 0, 1280, 800)}}).error(),
        invalid("layout is not contiguous; isolated displays: [2]"));
}

TEST(LayoutValidator, RejectsAHalfPointGap) {
    EXPECT_EQ(
        LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(1920.5, 0, 1280, 800)}}).error(),
        invalid("layout is not contiguous; isolated displays: [2]"));
}

TEST(LayoutValidator, RejectsDisplaysTouchingOnlyAtACorner) {
    EXPECT_EQ(
        LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(1920, 1080, 1280, 800)}}).error(),
        invalid("layout is not contiguous; isolated displays: [2]"));
}

TEST(LayoutValidator, ReachesDisplaysThroughOtherDisplays) {
    const FrameMap frames{
        {1, frame(0, 0, 1920, 1080)}, {2, frame(1920, 0, 1920, 1080)}, {3, frame(3840, 0, 1920, 1080)}};
    EXPECT_TRUE(LayoutValidator::validate(frames).has_value());
}

TEST(LayoutValidator, AcceptsADisplayAboveTheMainDisplay) {
    EXPECT_TRUE(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(-200, -800, 1280, 800)}})
                    .has_value());
}

TEST(LayoutValidator, ListsEveryIsolatedDisplayAscending) {
    const FrameMap frames{{1, frame(0, 0, 1920, 1080)},
                          {5, frame(5000, 0, 100, 100)},
                          {2, frame(1920, 0, 100, 100)},
                          {3, frame(-5000, 0, 100, 100)}};
    EXPECT_EQ(LayoutValidator::validate(frames).error(),
              invalid("layout is not contiguous; isolated displays: [3, 5]"));
}

TEST(LayoutValidator, ReadsEdgesOfStandardisedFrames) {
    // Display 2 is stored with its origin at its right edge and a negative width: it covers
    // (-1280, 0) to (0, 800), left of the main display.
    EXPECT_TRUE(LayoutValidator::validate({{1, frame(0, 0, 1920, 1080)}, {2, frame(0, 100, -1280, 800)}})
                    .has_value());
}

TEST(LayoutValidator, LeavesItsInputUnchanged) {
    const FrameMap frames{{1, frame(0, 0, 1920, 1080)}, {2, frame(1919, 0, 1280, 800)}};
    const FrameMap copy = frames;
    (void)LayoutValidator::validate(frames);
    EXPECT_EQ(frames, copy);
}

}  // namespace
}  // namespace screenweaver
