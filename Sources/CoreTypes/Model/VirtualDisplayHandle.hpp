#pragma once

#include <cstdint>
#include <functional>

#include "CoreTypes/Model/VirtualDisplaySpec.hpp"

namespace screenweaver {

/// A virtual display that was created: the VirtualDisplaySpec it came from, the display ID it received and
/// the density that was actually used (which can differ from the density asked for).
struct VirtualDisplayHandle {
    VirtualDisplaySpec spec{};
    std::uint32_t displayID = 0;
    /// Pixels per inch.
    double acceptedPPI = 0.0;

    friend bool operator==(const VirtualDisplayHandle&, const VirtualDisplayHandle&) = default;
};

}  // namespace screenweaver

/// Feeds spec, display ID and density; 0.0 and -0.0 hash alike.
template <>
struct std::hash<screenweaver::VirtualDisplayHandle> {
    std::size_t operator()(const screenweaver::VirtualDisplayHandle& handle) const noexcept;
};
