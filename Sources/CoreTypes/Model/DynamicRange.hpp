#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace screenweaver {

/// The transfer range asked of a virtual display.
enum class DynamicRange {
    standard,
    high,
    reference,
};

/// Every case, in declaration order.
inline constexpr std::array<DynamicRange, 3> allDynamicRanges{
    DynamicRange::standard,
    DynamicRange::high,
    DynamicRange::reference,
};

/// "standard", "high" or "reference": the JSON form.
std::string_view rawValue(DynamicRange range);

/// The case whose raw value is exactly `raw` (case-sensitive), or nothing.
std::optional<DynamicRange> dynamicRangeFromRawValue(std::string_view raw);

}  // namespace screenweaver
