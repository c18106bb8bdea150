#pragma once

#include <cstdint>
#include <vector>

#include "CoreTypes/Model/DisplayPlacement.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/Geometry.hpp"

/// Moves placements so that the main display sits at (0,0), and reads the current placements out
/// of a topology. Nothing is rounded and nothing can fail.
namespace screenweaver::LayoutNormalizer {

/// `placements` shifted so that the first placement of `main` lands on (0,0); unchanged when no
/// placement carries `main`.
[[nodiscard]] std::vector<DisplayPlacement> normalized(const std::vector<DisplayPlacement>& placements,
                                                       std::uint32_t main);

/// True when the first placement of `main` sits at exactly (0,0); false for an empty list and
/// when no placement carries `main`.
[[nodiscard]] bool isNormalized(const std::vector<DisplayPlacement>& placements, std::uint32_t main);

/// One placement per display, in topology order, at the origin of its bounds; shifted so that the
/// main display sits at (0,0) when the topology has one.
[[nodiscard]] std::vector<DisplayPlacement> capture(const DisplayTopology& topology);

namespace detail {

/// Every placement moved by minus `offset`, keeping IDs and order; an offset of exactly (0,0)
/// returns the list as it is.
[[nodiscard]] std::vector<DisplayPlacement> translated(const std::vector<DisplayPlacement>& placements,
                                                       Point offset);

}  // namespace detail

}  // namespace screenweaver::LayoutNormalizer
