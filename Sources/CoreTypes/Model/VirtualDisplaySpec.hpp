#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "CoreTypes/Model/DynamicRange.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// What one virtual display should be. Plain data without validation of its own: whether the
/// geometry is acceptable is decided when a display is made from it.
struct VirtualDisplaySpec {
    /// Stable across activations; the display's serial number is derived from it.
    UUID id{};
    std::string name{};
    /// The catalog entry this display was made from; absent for a custom display.
    std::optional<std::string> catalogEntryID{};
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    /// Hertz.
    double refreshRate = 0.0;
    /// The display offers a 2x mode whose point size is half the pixel size.
    bool hiDPI = false;
    /// Degrees.
    std::int64_t rotation = 0;
    DynamicRange dynamicRange = DynamicRange::standard;
    /// Pixels per inch to aim for instead of the computed density.
    std::optional<double> targetPPIOverride{};

    friend bool operator==(const VirtualDisplaySpec&, const VirtualDisplaySpec&) = default;
};

}  // namespace screenweaver

/// Feeds the ten fields in declaration order, the dynamic range as its raw value.
template <>
struct std::hash<screenweaver::VirtualDisplaySpec> {
    std::size_t operator()(const screenweaver::VirtualDisplaySpec& spec) const noexcept;
};
