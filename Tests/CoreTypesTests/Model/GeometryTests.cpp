#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/Model/Geometry.hpp"

namespace screenweaver {
namespace {

TEST(Rect, EdgesReadTheStandardisedRectangle) {
    const Rect rect{{100.0, 50.0}, {-40.0, -20.0}};
    EXPECT_EQ(rect.minX(), 60.0);
    EXPECT_EQ(rect.maxX(), 100.0);
    EXPECT_EQ(rect.minY(), 30.0);
    EXPECT_EQ(rect.maxY(), 50.0);
    EXPECT_EQ(rect.width(), 40.0);
    EXPECT_EQ(rect.height(), 20.0);
    EXPECT_EQ(rect.midX(), 80.0);
    EXPECT_EQ(rect.midY(), 40.0);
}

TEST(Rect, EqualsTheSameRectangleWrittenWithNegativeSize) {
    const Rect negative{{100.0, 50.0}, {-40.0, -20.0}};
    const Rect positive{{60.0, 30.0}, {40.0, 20.0}};
    EXPECT_EQ(negative, positive);
    EXPECT_EQ(std::hash<Rect>{}(negative), std::hash<Rect>{}(positive));
}

TEST(Rect, DiffersWhenAnyEdgeDiffers) {
    EXPECT_NE((Rect{{0, 0}, {1920, 1080}}), (Rect{{0, 0}, {1920, 1081}}));
    EXPECT_NE((Rect{{0, 0}, {1920, 1080}}), (Rect{{1, 0}, {1920, 1080}}));
}

TEST(Rect, HashesNegativeZeroAsZero) {
    const Rect negativeZero{{-0.0, -0.0}, {1920.0, 1080.0}};
    const Rect zero{{0.0, 0.0}, {1920.0, 1080.0}};
    EXPECT_EQ(negativeZero, zero);
    EXPECT_EQ(std::hash<Rect>{}(negativeZero), std::hash<Rect>{}(zero));
}

TEST(Point, HashesNegativeZeroAsZero) {
    EXPECT_EQ((Point{-0.0, 0.0}), (Point{0.0, -0.0}));
    EXPECT_EQ(std::hash<Point>{}(Point{-0.0, 0.0}), std::hash<Point>{}(Point{0.0, -0.0}));
}

}  // namespace
}  // namespace screenweaver
