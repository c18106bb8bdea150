#include "DisplayKit/ArrangementPlanner.hpp"

namespace screenweaver::ArrangementPlanner {

std::expected<FrameMap, DisplayError> plannedFrames(const LayoutPlan& plan, const DisplayTopology& topology,
                                                    const UnknownDisplayRef& unknownDisplayRef) {
    if (topology.displays.empty()) {
        return std::unexpected{DisplayError::wouldLeaveZeroDisplays()};
    }
    FrameMap frames;
    for (const auto& display : topology.displays) {
        // The first occurrence of an ID wins.
        frames.try_emplace(display.displayID, display.bounds);
    }
    // Mode changes before placements: the transaction stages them in that order too.
    for (const auto& change : plan.modeChanges) {
        const auto frame = frames.find(change.displayID);
        if (frame == frames.end()) {
            return std::unexpected{DisplayError::displayNotFound(unknownDisplayRef(change.displayID))};
        }
        frame->second.size = {static_cast<double>(change.mode.pointWidth),
                              static_cast<double>(change.mode.pointHeight)};
    }
    for (const auto& placement : plan.placements) {
        const auto frame = frames.find(placement.displayID);
        if (frame == frames.end()) {
            return std::unexpected{DisplayError::displayNotFound(unknownDisplayRef(placement.displayID))};
        }
        frame->second.origin = placement.origin;
    }
    if (frames.empty()) {
        return std::unexpected{DisplayError::wouldLeaveZeroDisplays()};
    }
    return frames;
}

std::unordered_set<std::uint32_t> referencedDisplayIDs(const LayoutPlan& plan) {
    std::unordered_set<std::uint32_t> ids;
    for (const auto& placement : plan.placements) {
        ids.insert(placement.displayID);
    }
    for (const auto& change : plan.modeChanges) {
        ids.insert(change.displayID);
    }
    ids.insert(plan.unmirror.begin(), plan.unmirror.end());
    return ids;
}

}  // namespace screenweaver::ArrangementPlanner
