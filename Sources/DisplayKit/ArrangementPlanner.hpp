#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <unordered_set>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/LayoutPlan.hpp"
#include "DisplayKit/FrameMap.hpp"

/// Predicts, before anything is touched, the frame every online display will have once a plan is
/// applied, so that the whole resulting arrangement can be validated, displays the plan does not
/// mention included.
namespace screenweaver::ArrangementPlanner {

/// Names a display that the topology does not hold, for the `displayNotFound` error.
using UnknownDisplayRef = std::function<DisplayRef(std::uint32_t displayID)>;

/// The topology's frames with the plan's mode changes (new sizes in points, origins kept) and then
/// its placements (new origins, sizes kept) applied in plan order; a later entry for a display
/// overrides an earlier one and `unmirror` changes no frame. Fails with `wouldLeaveZeroDisplays`
/// for an empty topology, and with `displayNotFound` for the first display the plan names that is
/// not online.
[[nodiscard]] std::expected<FrameMap, DisplayError> plannedFrames(const LayoutPlan& plan,
                                                                  const DisplayTopology& topology,
                                                                  const UnknownDisplayRef& unknownDisplayRef);

/// Every display ID the plan names, in placements, mode changes or `unmirror`.
[[nodiscard]] std::unordered_set<std::uint32_t> referencedDisplayIDs(const LayoutPlan& plan);

}  // namespace screenweaver::ArrangementPlanner
