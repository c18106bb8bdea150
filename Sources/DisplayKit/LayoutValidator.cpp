#include "DisplayKit/LayoutValidator.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver::LayoutValidator {

namespace {

using Entry = std::pair<std::uint32_t, Rect>;

std::vector<Entry> sortedByID(const FrameMap& frames) {
    std::vector<Entry> entries{frames.begin(), frames.end()};
    std::ranges::sort(entries, {}, &Entry::first);
    return entries;
}

std::string bracketedList(const std::vector<std::uint32_t>& ids) {
    std::string text = "[";
    for (std::size_t index = 0; index < ids.size(); ++index) {
        if (index > 0) {
            text += ", ";
        }
        text += std::to_string(ids[index]);
    }
    return text + "]";
}

// The window server takes origins as signed 32-bit integers, rounded half away from zero.
bool fitsDisplayCoordinates(double value) {
    if (!std::isfinite(value)) {
        return false;
    }
    const double rounded = std::round(value);
    return rounded >= static_cast<double>(std::numeric_limits<std::int32_t>::min()) &&
           rounded <= static_cast<double>(std::numeric_limits<std::int32_t>::max());
}

std::expected<void, DisplayError> validateFrameGeometry(const FrameMap& frames) {
    for (const auto& [id, frame] : sortedByID(frames)) {
        // Written as negations so that a NaN width or height fails too.
        if (!(frame.width() > 0) || !(frame.height() > 0)) {
            return std::unexpected{DisplayError::invalidLayout(
                "display " + std::to_string(id) + " has an empty frame (" + text::describe(frame.origin.x) +
                ", " + text::describe(frame.origin.y) + ", " + text::describe(frame.width()) + ", " +
                text::describe(frame.height()) + ")")};
        }
        if (!fitsDisplayCoordinates(frame.origin.x) || !fitsDisplayCoordinates(frame.origin.y)) {
            return std::unexpected{DisplayError::invalidLayout(
                "display " + std::to_string(id) + " has an unusable origin (" +
                text::describe(frame.origin.x) + ", " + text::describe(frame.origin.y) + ")")};
        }
    }
    return {};
}

bool isAtOrigin(const Rect& frame) {
    return frame.origin.x == 0 && frame.origin.y == 0;
}

std::expected<void, DisplayError> validateSingleDisplayAtOrigin(const FrameMap& frames) {
    std::vector<std::uint32_t> atOrigin;
    for (const auto& [id, frame] : frames) {
        if (isAtOrigin(frame)) {
            atOrigin.push_back(id);
        }
    }
    if (atOrigin.empty()) {
        return std::unexpected{
            DisplayError::invalidLayout("no display at (0,0); the main display must sit there")};
    }
    if (atOrigin.size() > 1) {
        std::ranges::sort(atOrigin);
        return std::unexpected{DisplayError::invalidLayout("displays " + bracketedList(atOrigin) +
                                                           " share (0,0); exactly one may")};
    }
    return {};
}

bool overlap(const Rect& a, const Rect& b) {
    return a.minX() < b.maxX() && b.minX() < a.maxX() && a.minY() < b.maxY() && b.minY() < a.maxY();
}

std::expected<void, DisplayError> validateNoOverlaps(const FrameMap& frames) {
    const std::vector<Entry> entries = sortedByID(frames);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        for (std::size_t j = i + 1; j < entries.size(); ++j) {
            if (overlap(entries[i].second, entries[j].second)) {
                return std::unexpected{
                    DisplayError::invalidLayout("displays " + std::to_string(entries[i].first) + " and " +
                                                std::to_string(entries[j].first) + " overlap")};
            }
        }
    }
    return {};
}

// Sharing an edge along a stretch of positive length; a shared corner alone does not count.
bool adjacent(const Rect& a, const Rect& b) {
    const bool verticalEdgeShared =
        (a.minX() == b.maxX() || b.minX() == a.maxX()) && a.minY() < b.maxY() && b.minY() < a.maxY();
    const bool horizontalEdgeShared =
        (a.minY() == b.maxY() || b.minY() == a.maxY()) && a.minX() < b.maxX() && b.minX() < a.maxX();
    return verticalEdgeShared || horizontalEdgeShared;
}

std::expected<void, DisplayError> validateContiguity(const FrameMap& frames) {
    const auto origin =
        std::ranges::find_if(frames, [](const auto& entry) { return isAtOrigin(entry.second); });
    if (origin == frames.end()) {
        return {};
    }
    std::unordered_set<std::uint32_t> visited{origin->first};
    std::vector<std::uint32_t> stack{origin->first};
    while (!stack.empty()) {
        const std::uint32_t current = stack.back();
        stack.pop_back();
        const auto frame = frames.find(current);
        if (frame == frames.end()) {
            continue;
        }
        for (const auto& [id, other] : frames) {
            if (!visited.contains(id) && adjacent(frame->second, other)) {
                visited.insert(id);
                stack.push_back(id);
            }
        }
    }
    if (visited.size() < frames.size()) {
        std::vector<std::uint32_t> isolated;
        for (const auto& [id, frame] : frames) {
            if (!visited.contains(id)) {
                isolated.push_back(id);
            }
        }
        std::ranges::sort(isolated);
        return std::unexpected{DisplayError::invalidLayout("layout is not contiguous; isolated displays: " +
                                                           bracketedList(isolated))};
    }
    return {};
}

}  // namespace

std::expected<void, DisplayError> validate(const FrameMap& frames) {
    if (frames.empty()) {
        return std::unexpected{DisplayError::invalidLayout("the arrangement contains no displays")};
    }
    for (const auto rule :
         {validateFrameGeometry, validateSingleDisplayAtOrigin, validateNoOverlaps, validateContiguity}) {
        if (auto verdict = rule(frames); !verdict) {
            return verdict;
        }
    }
    return {};
}

}  // namespace screenweaver::LayoutValidator
