#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace screenweaver {

/// What the window server reports about one active display right now: enough to tell whether a
/// new virtual display came up, unmirrored and at its size, and whether it is one of ours.
struct LiveDisplaySnapshot {
    std::uint32_t displayID = 0;
    /// For the displays this system creates, the product's vendor number.
    std::uint32_t vendorNumber = 0;
    std::uint32_t serialNumber = 0;
    /// The display this one mirrors; absent when it mirrors none.
    std::optional<std::uint32_t> mirrorSource{};
    /// Current size in pixels.
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;

    friend bool operator==(const LiveDisplaySnapshot&, const LiveDisplaySnapshot&) = default;
};

}  // namespace screenweaver

/// Feeds the six fields in declaration order.
template <>
struct std::hash<screenweaver::LiveDisplaySnapshot> {
    std::size_t operator()(const screenweaver::LiveDisplaySnapshot& snapshot) const noexcept;
};
