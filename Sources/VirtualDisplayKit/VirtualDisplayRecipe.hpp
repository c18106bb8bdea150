#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "CoreTypes/Model/DynamicRange.hpp"
#include "CoreTypes/Model/Geometry.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "VirtualDisplayKit/VirtualDisplayModeSpec.hpp"

namespace screenweaver {

/// Everything the native builder needs to make one display at one rung of the density ladder,
/// without any platform type: the descriptor's values, the settings' modes and the rung itself.
struct VirtualDisplayRecipe {
    std::string name{};
    /// Full pixels, never halved for HiDPI.
    std::uint32_t maxPixelsWide = 0;
    std::uint32_t maxPixelsHigh = 0;
    /// The physical size the pixels take at `ppi`, in millimetres.
    Size sizeInMillimeters{};
    std::uint32_t serialNumber = 0;
    /// Marks the display as one of ours among all live displays.
    std::uint32_t vendorID = 0;
    std::uint32_t productID = 0;
    /// The preferred mode first.
    std::vector<VirtualDisplayModeSpec> modes{};
    bool hiDPI = false;
    /// Degrees: 0, 90, 180 or 270.
    std::uint32_t rotation = 0;
    DynamicRange dynamicRange = DynamicRange::standard;
    /// The rung of the density ladder, pixels per inch.
    double ppi = 0.0;

    /// The recipe for a validated `spec` at the density `ppi`.
    [[nodiscard]] static VirtualDisplayRecipe make(const VirtualDisplaySpec& spec, double ppi);

    friend bool operator==(const VirtualDisplayRecipe&, const VirtualDisplayRecipe&) = default;
};

/// Every display this system creates carries this product number.
inline constexpr std::uint32_t virtualDisplayProductID = 1;

}  // namespace screenweaver

/// Feeds the twelve fields in declaration order.
template <>
struct std::hash<screenweaver::VirtualDisplayRecipe> {
    std::size_t operator()(const screenweaver::VirtualDisplayRecipe& recipe) const noexcept;
};
