#include "DisplayKit/LayoutNormalizer.hpp"

#include <algorithm>

namespace screenweaver::LayoutNormalizer {

namespace {

const DisplayPlacement* firstPlacement(const std::vector<DisplayPlacement>& placements,
                                       std::uint32_t displayID) {
    const auto found = std::ranges::find(placements, displayID, &DisplayPlacement::displayID);
    return found == placements.end() ? nullptr : &*found;
}

}  // namespace

std::vector<DisplayPlacement> normalized(const std::vector<DisplayPlacement>& placements,
                                         std::uint32_t main) {
    const DisplayPlacement* mainPlacement = firstPlacement(placements, main);
    if (mainPlacement == nullptr) {
        return placements;
    }
    return detail::translated(placements, mainPlacement->origin);
}

bool isNormalized(const std::vector<DisplayPlacement>& placements, std::uint32_t main) {
    const DisplayPlacement* mainPlacement = firstPlacement(placements, main);
    return mainPlacement != nullptr && mainPlacement->origin.x == 0 && mainPlacement->origin.y == 0;
}

std::vector<DisplayPlacement> capture(const DisplayTopology& topology) {
    std::vector<DisplayPlacement> placements;
    placements.reserve(topology.displays.size());
    for (const auto& display : topology.displays) {
        placements.push_back({display.displayID, display.bounds.origin});
    }
    if (const auto main = topology.main()) {
        return normalized(placements, main->displayID);
    }
    return placements;
}

namespace detail {

std::vector<DisplayPlacement> translated(const std::vector<DisplayPlacement>& placements, Point offset) {
    if (offset.x == 0 && offset.y == 0) {
        return placements;
    }
    std::vector<DisplayPlacement> moved = placements;
    for (auto& placement : moved) {
        placement.origin = {placement.origin.x - offset.x, placement.origin.y - offset.y};
    }
    return moved;
}

}  // namespace detail

}  // namespace screenweaver::LayoutNormalizer
