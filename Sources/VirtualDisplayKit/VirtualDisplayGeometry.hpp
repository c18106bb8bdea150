#pragma once

#include <cstdint>
#include <expected>
#include <vector>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/Geometry.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "VirtualDisplayKit/VirtualDisplayModeSpec.hpp"

/// What a spec means as a display, decided before anything is asked of the system: whether its
/// geometry is acceptable, the densities to try (the density ladder), the modes to offer and the
/// physical size at a density. Pure computations.
namespace screenweaver::VirtualDisplayGeometry {

/// The largest pixel count in either dimension.
inline constexpr std::int64_t maximumPixelCount = 32768;
/// Hertz, inclusive.
inline constexpr double maximumRefreshRate = 480.0;
/// Pixels per inch, inclusive.
inline constexpr double maximumTargetPPI = 1000.0;
/// The first rung when a VirtualDisplaySpec names no density.
inline constexpr double defaultPPI = 150.0;
/// The rungs below the first, best first.
inline constexpr double fallbackPPIs[] = {120.0, 100.0, 80.0};
inline constexpr double millimetersPerInch = 25.4;

/// Succeeds for a usable spec; otherwise `invalidSpec` with the reason of the first rule it breaks:
/// a positive pixel size, at most 32768 pixels a side, an even size for HiDPI, a refresh rate in
/// (0, 480], a rotation of 0, 90, 180 or 270, and a target density in (0, 1000] when one is given.
[[nodiscard]] std::expected<void, VirtualDisplayError> validate(const VirtualDisplaySpec& spec);

/// The densities to try, best first: `spec`'s target density (150 without one), then each of 120,
/// 100 and 80 that lies strictly below it. Never empty.
///
///     ppiLadder(spec without target)  // {150, 120, 100, 80}
///     ppiLadder(spec targeting 110)   // {110, 100, 80}
[[nodiscard]] std::vector<double> ppiLadder(const VirtualDisplaySpec& spec);

/// The modes of a validated spec, preferred first: its own size in points at its rate, then a
/// 1920x1080 mode at 60 Hz when the display is at least that large in points but not exactly it.
[[nodiscard]] std::vector<VirtualDisplayModeSpec> modes(const VirtualDisplaySpec& spec);

/// The physical size of a VirtualDisplaySpec's full pixel size at `ppi`, in millimetres; each side is divided
/// by the density first and then multiplied by 25.4 (5120x1440 at 150 PPI: 866.9866... x 243.84).
[[nodiscard]] Size sizeInMillimeters(const VirtualDisplaySpec& spec, double ppi);

/// A validated pixel count as the platform's 32-bit count. A value out of range is a programming
/// error and stops the process.
[[nodiscard]] std::uint32_t pixelCount(std::int64_t pixels);

/// A density as messages print it: truncated toward zero to a whole number (99.9 reads 99).
[[nodiscard]] std::int64_t wholePPI(double ppi);

}  // namespace screenweaver::VirtualDisplayGeometry
