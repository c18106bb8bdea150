#pragma once

#include <cstdint>
#include <unordered_map>

#include "CoreTypes/Model/Geometry.hpp"

namespace screenweaver {

/// The frame every display has, or will have, in global display coordinates (points; y grows
/// downwards; the main display's top-left corner is (0,0)), keyed by display ID. The map's own
/// order means nothing: wherever an order shows in a result, IDs are sorted ascending.
using FrameMap = std::unordered_map<std::uint32_t, Rect>;

}  // namespace screenweaver
