#pragma once

#include <cstdint>

namespace screenweaver {

/// The vendor number (0x5357) of every virtual display this product creates. It is how the product
/// recognises its own displays among the live ones, so every place that creates or looks for them
/// uses this one constant.
inline constexpr std::uint32_t virtualDisplayVendorID = 0x5357;

}  // namespace screenweaver
