#pragma once

#include <expected>

#include "CoreTypes/Errors.hpp"
#include "DisplayKit/FrameMap.hpp"

/// Decides whether a set of planned frames is an arrangement the window server can hold. The rules
/// run in this order and the first that fails is reported as `DisplayError::invalidLayout`:
///
/// 1. the map holds at least one display;
/// 2. every frame has a positive width and height, and an origin whose rounded coordinates fit in a
///    signed 32-bit integer;
/// 3. exactly one display sits at exactly (0,0);
/// 4. no two frames overlap (sharing an edge or a corner is no overlap);
/// 5. every display is reachable from the one at (0,0) through shared edges, with no tolerance:
///
///        +------+------+        A and B share an edge: adjacent.
///        |  A   |  B   |        C touches B only at a corner: isolated.
///        +------+------+------+
///                      |  C   |
///                      +------+
///
/// Edges are those of the standardised rectangles. Validation never changes its input and logs
/// nothing.
namespace screenweaver::LayoutValidator {

[[nodiscard]] std::expected<void, DisplayError> validate(const FrameMap& frames);

}  // namespace screenweaver::LayoutValidator
