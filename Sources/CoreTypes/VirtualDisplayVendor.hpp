#pragma once

#include <cstdint>

namespace screenweaver {

/// The vendor number (0x5357) that every virtual display this product creates carries; a live
/// display with it is one of ours, whatever its serial number.
inline constexpr std::uint32_t virtualDisplayVendorID = 21335;

}  // namespace screenweaver
