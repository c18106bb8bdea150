#include <cmath>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/LayoutValidator.hpp"

namespace screenweaver {
namespace {

// A second, deliberately plain reading of the validation rules: ordered maps instead of sorting,
// breadth-first instead of depth-first search, edges computed by hand. The two must agree on the
// verdict and on the reason for every arrangement.
struct Box {
    double left, top, right, bottom;
};

Box box(const Rect& rect) {
    double left = rect.origin.x;
    double top = rect.origin.y;
    double right = left + rect.size.width;
    double bottom = top + rect.size.height;
    if (right < left) {
        std::swap(left, right);
    }
    if (bottom < top) {
        std::swap(top, bottom);
    }
    return {left, top, right, bottom};
}

std::string list(const std::set<std::uint32_t>& ids) {
    std::ostringstream text;
    text << "[";
    bool first = true;
    for (const auto id : ids) {
        text << (first ? "" : ", ") << id;
        first = false;
    }
    text << "]";
    return text.str();
}

bool usable(double coordinate) {
    return std::isfinite(coordinate) && std::round(coordinate) >= -2147483648.0 &&
           std::round(coordinate) <= 2147483647.0;
}

std::optional<std::string> referenceReason(const FrameMap& unordered) {
    const std::map<std::uint32_t, Rect> frames{unordered.begin(), unordered.end()};
    if (frames.empty()) {
        return "the arrangement contains no displays";
    }
    for (const auto& [id, rect] : frames) {
        const double width = std::fabs(rect.size.width);
        const double height = std::fabs(rect.size.height);
        if (std::isnan(width) || std::isnan(height) || width == 0 || height == 0) {
            return "display " + std::to_string(id) + " has an empty frame (" + text::describe(rect.origin.x) +
                   ", " + text::describe(rect.origin.y) + ", " + text::describe(width) + ", " +
                   text::describe(height) + ")";
        }
        if (!usable(rect.origin.x) || !usable(rect.origin.y)) {
            return "display " + std::to_string(id) + " has an unusable origin (" +
                   text::describe(rect.origin.x) + ", " + text::describe(rect.origin.y) + ")";
        }
    }
    std::set<std::uint32_t> atOrigin;
    for (const auto& [id, rect] : frames) {
        if (rect.origin.x == 0 && rect.origin.y == 0) {
            atOrigin.insert(id);
        }
    }
    if (atOrigin.empty()) {
        return "no display at (0,0); the main display must sit there";
    }
    if (atOrigin.size() > 1) {
        return "displays " + list(atOrigin) + " share (0,0); exactly one may";
    }
    for (auto first = frames.begin(); first != frames.end(); ++first) {
        for (auto second = std::next(first); second != frames.end(); ++second) {
            const Box a = box(first->second);
            const Box b = box(second->second);
            const bool apartHorizontally = a.right <= b.left || b.right <= a.left;
            const bool apartVertically = a.bottom <= b.top || b.bottom <= a.top;
            if (!apartHorizontally && !apartVertically) {
                return "displays " + std::to_string(first->first) + " and " + std::to_string(second->first) +
                       " overlap";
            }
        }
    }
    std::set<std::uint32_t> reached{*atOrigin.begin()};
    std::deque<std::uint32_t> queue{*atOrigin.begin()};
    while (!queue.empty()) {
        const Box a = box(frames.at(queue.front()));
        queue.pop_front();
        for (const auto& [id, rect] : frames) {
            if (reached.contains(id)) {
                continue;
            }
            const Box b = box(rect);
            const bool sideBySide =
                (a.left == b.right || a.right == b.left) && a.top < b.bottom && b.top < a.bottom;
            const bool aboveBelow =
                (a.top == b.bottom || a.bottom == b.top) && a.left < b.right && b.left < a.right;
            if (sideBySide || aboveBelow) {
                reached.insert(id);
                queue.push_back(id);
            }
        }
    }
    std::set<std::uint32_t> isolated;
    for (const auto& [id, rect] : frames) {
        if (!reached.contains(id)) {
            isolated.insert(id);
        }
    }
    if (!isolated.empty()) {
        return "layout is not contiguous; isolated displays: " + list(isolated);
    }
    return std::nullopt;
}

// Arrangements on a coarse grid, so that shared edges, corners, overlaps and the origin come up
// often, with now and then an empty frame, a negative size or an unusable origin.
FrameMap randomArrangement(std::mt19937& random) {
    std::uniform_int_distribution<int> count{0, 16};
    std::uniform_int_distribution<int> cell{-3, 3};
    std::uniform_int_distribution<int> span{1, 3};
    std::uniform_int_distribution<int> oddity{0, 99};
    std::uniform_int_distribution<std::uint32_t> id{1, 40};
    FrameMap frames;
    const int displays = count(random);
    for (int index = 0; index < displays; ++index) {
        Rect rect{{cell(random) * 400.0, cell(random) * 300.0}, {span(random) * 400.0, span(random) * 300.0}};
        switch (oddity(random)) {
            case 0:
                rect.size.width = 0;
                break;
            case 1:
                rect.size.height = std::nan("");
                break;
            case 2:
                rect.origin.x = 3e9;
                break;
            case 3:
                rect.origin.y = -INFINITY;
                break;
            case 4:
                rect.size.width = -rect.size.width;
                break;
            case 5:
                rect.origin.x += 0.5;
                break;
            default:
                break;
        }
        frames[id(random)] = rect;
    }
    // Most arrangements get a display at the origin, so that the later rules are reached.
    if (!frames.empty() && oddity(random) < 80) {
        frames.begin()->second.origin = {0, 0};
    }
    return frames;
}

TEST(LayoutValidatorProperty, AgreesWithAPlainReadingOfTheRulesOnRandomArrangements) {
    std::mt19937 random{20261121};
    std::map<std::string, int> verdicts;
    for (int trial = 0; trial < 20000; ++trial) {
        const FrameMap frames = randomArrangement(random);
        const auto expected = referenceReason(frames);
        const auto actual = LayoutValidator::validate(frames);
        if (expected) {
            ASSERT_FALSE(actual.has_value()) << "trial " << trial << " expected: " << *expected;
            ASSERT_EQ(actual.error(), DisplayError::invalidLayout(*expected)) << "trial " << trial;
        } else {
            ASSERT_TRUE(actual.has_value()) << "trial " << trial << ": " << actual.error().description();
        }
        const auto reason = expected.value_or("valid");
        ++verdicts[reason.substr(0, reason.find_first_of("0123456789[("))];
    }
    // Every rule was exercised, both ways.
    for (const auto* outcome : {"valid", "the arrangement contains no displays", "display ", "no display at ",
                                "displays ", "layout is not contiguous; isolated displays: "}) {
        EXPECT_GT(verdicts[outcome], 20) << outcome;
    }
}

}  // namespace
}  // namespace screenweaver
