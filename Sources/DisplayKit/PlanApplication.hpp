#pragma once

#include <expected>
#include <functional>
#include <string>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/LayoutPlan.hpp"
#include "CoreTypes/StopToken.hpp"
#include "DisplayKit/ArrangementPlanner.hpp"
#include "DisplayKit/ChangeDebouncer.hpp"
#include "DisplayKit/FrameMap.hpp"

/// The road every display provider applies a layout plan on, around its own transaction: wait for
/// the displays the plan names to be online with no burst in flight, predict the whole arrangement
/// the plan leads to and validate it, commit, and say what was committed.
namespace screenweaver::PlanApplication {

/// The provider's own snapshot of the displays online now.
using Snapshot = std::function<std::expected<DisplayTopology, DisplayError>()>;

/// The first topology, taken while `debouncer` has no burst in flight, that holds every display
/// the plan names; an immediate snapshot first, then the published topologies, for at most
/// `timeout` on `clock`. When none comes (or `stop` is requested), logs "Displays did not settle
/// before the timeout; using a live snapshot" and takes a live snapshot, whose failure is the
/// result.
[[nodiscard]] std::expected<DisplayTopology, DisplayError> settledTopology(
    const LayoutPlan& plan, const ChangeDebouncer& debouncer, Clock::Duration timeout, const Clock& clock,
    const Snapshot& snapshot, const StopToken& stop);

/// The frames the plan gives every display of `topology`, validated as a whole. The planner's
/// error passes unlogged; a rejected arrangement is logged as "Rejected layout plan: <error>".
[[nodiscard]] std::expected<FrameMap, DisplayError> validatedFrames(
    const LayoutPlan& plan, const DisplayTopology& topology,
    const ArrangementPlanner::UnknownDisplayRef& unknownDisplayRef);

/// The reason of a mode change that no listed mode matches: "no mode matching
/// DisplayModeInfo(pixelWidth: 3840, pixelHeight: 2160, pointWidth: 1920, pointHeight: 1080,
/// refreshRate: 60.0) on display 2".
[[nodiscard]] std::string noModeMatching(const ModeChange& change);

/// Logs "Committed arrangement: P placements, M mode changes, U un-mirrored".
void logCommitted(const LayoutPlan& plan);

}  // namespace screenweaver::PlanApplication
