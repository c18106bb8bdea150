#include "DisplayKit/PlanApplication.hpp"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "CoreTypes/Log.hpp"
#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/DisplaySettleWaiter.hpp"
#include "DisplayKit/LayoutValidator.hpp"

namespace screenweaver::PlanApplication {

std::expected<DisplayTopology, DisplayError> settledTopology(const LayoutPlan& plan,
                                                             const ChangeDebouncer& debouncer,
                                                             Clock::Duration timeout, const Clock& clock,
                                                             const Snapshot& snapshot,
                                                             const StopToken& stop) {
    const auto required = ArrangementPlanner::referencedDisplayIDs(plan);
    DisplaySettleWaiter waiter{debouncer.broadcaster().stream(),
                               [&debouncer, &snapshot]() -> std::optional<DisplayTopology> {
                                   // A snapshot taken during a burst may show a half-done change.
                                   if (debouncer.burstInFlight()) {
                                       return std::nullopt;
                                   }
                                   auto topology = snapshot();
                                   return topology ? std::optional{std::move(*topology)} : std::nullopt;
                               },
                               timeout, clock};
    auto settled = waiter.firstSettledTopology(
        [&required](const DisplayTopology& topology) {
            std::unordered_set<std::uint32_t> online;
            for (const auto& display : topology.displays) {
                online.insert(display.displayID);
            }
            return std::ranges::all_of(required, [&online](std::uint32_t id) { return online.contains(id); });
        },
        stop);
    if (settled) {
        return std::move(*settled);
    }
    Log::display().error("Displays did not settle before the timeout; using a live snapshot");
    return snapshot();
}

std::expected<FrameMap, DisplayError> validatedFrames(
    const LayoutPlan& plan, const DisplayTopology& topology,
    const ArrangementPlanner::UnknownDisplayRef& unknownDisplayRef) {
    auto frames = ArrangementPlanner::plannedFrames(plan, topology, unknownDisplayRef);
    if (!frames) {
        return frames;
    }
    if (auto verdict = LayoutValidator::validate(*frames); !verdict) {
        Log::display().error("Rejected layout plan: " + verdict.error().description());
        return std::unexpected{std::move(verdict.error())};
    }
    return frames;
}

std::string noModeMatching(const ModeChange& change) {
    const DisplayModeInfo& mode = change.mode;
    return "no mode matching DisplayModeInfo(pixelWidth: " + std::to_string(mode.pixelWidth) +
           ", pixelHeight: " + std::to_string(mode.pixelHeight) +
           ", pointWidth: " + std::to_string(mode.pointWidth) +
           ", pointHeight: " + std::to_string(mode.pointHeight) +
           ", refreshRate: " + text::describe(mode.refreshRate) + ") on display " +
           std::to_string(change.displayID);
}

void logCommitted(const LayoutPlan& plan) {
    Log::display().log("Committed arrangement: " + std::to_string(plan.placements.size()) + " placements, " +
                       std::to_string(plan.modeChanges.size()) + " mode changes, " +
                       std::to_string(plan.unmirror.size()) + " un-mirrored");
}

}  // namespace screenweaver::PlanApplication
