#pragma once

#include <cmath>
#include <functional>

namespace screenweaver {

// Global display coordinates: the origin is the main display's top-left corner, x grows to the
// right and y grows downwards. Two displays that share an edge touch along it:
//
//     (0,0)-------(1920,0)-------(4480,0)
//       | main      |  second      |
//       |           |              |
//     (0,1080)----(1920,1080)    (4480,1440)

/// A point in global display coordinates (points, not pixels).
struct Point {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// A width and a height; either may be negative in a rectangle that is not standardised.
struct Size {
    double width = 0.0;
    double height = 0.0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle with the semantics of the platform's rectangles: a negative width or height
/// extends it to the left or upwards of its origin, the edge accessors read the standardised
/// rectangle, and two rectangles are equal when their standardised forms are.
struct Rect {
    Point origin{};
    Size size{};

    /// The same rectangle with a non-negative width and height.
    [[nodiscard]] Rect standardized() const {
        Rect rect = *this;
        if (rect.size.width < 0) {
            rect.origin.x += rect.size.width;
            rect.size.width = -rect.size.width;
        }
        if (rect.size.height < 0) {
            rect.origin.y += rect.size.height;
            rect.size.height = -rect.size.height;
        }
        return rect;
    }

    [[nodiscard]] double minX() const { return standardized().origin.x; }
    [[nodiscard]] double minY() const { return standardized().origin.y; }
    [[nodiscard]] double maxX() const { return minX() + width(); }
    [[nodiscard]] double maxY() const { return minY() + height(); }
    [[nodiscard]] double midX() const { return minX() + width() / 2.0; }
    [[nodiscard]] double midY() const { return minY() + height() / 2.0; }
    [[nodiscard]] double width() const { return std::fabs(size.width); }
    [[nodiscard]] double height() const { return std::fabs(size.height); }

    friend bool operator==(const Rect& lhs, const Rect& rhs) {
        const Rect left = lhs.standardized();
        const Rect right = rhs.standardized();
        return left.origin == right.origin && left.size == right.size;
    }
};

}  // namespace screenweaver

/// Feeds x then y, negative zero as zero.
template <>
struct std::hash<screenweaver::Point> {
    std::size_t operator()(const screenweaver::Point& point) const noexcept;
};

template <>
struct std::hash<screenweaver::Size> {
    std::size_t operator()(const screenweaver::Size& size) const noexcept;
};

/// Feeds the standardised rectangle's origin x, origin y, width and height, negative zero as
/// zero, so equal rectangles hash alike.
template <>
struct std::hash<screenweaver::Rect> {
    std::size_t operator()(const screenweaver::Rect& rect) const noexcept;
};
