#pragma once

#include <cstdint>
#include <functional>

namespace screenweaver {

/// One mode a virtual display offers, in points: the pixel size, or half of it for HiDPI.
struct VirtualDisplayModeSpec {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// Hertz.
    double refreshRate = 0.0;

    friend bool operator==(const VirtualDisplayModeSpec&, const VirtualDisplayModeSpec&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::VirtualDisplayModeSpec> {
    std::size_t operator()(const screenweaver::VirtualDisplayModeSpec& mode) const noexcept;
};
