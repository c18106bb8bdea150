#pragma once

#include <cstdint>
#include <functional>

namespace screenweaver {

/// One display mode: its backing size in pixels, its logical size in points and its refresh rate.
struct DisplayModeInfo {
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::int64_t pointWidth = 0;
    std::int64_t pointHeight = 0;
    /// Hertz.
    double refreshRate = 0.0;

    /// True when either axis has fewer points than pixels; a mode with more points than pixels is
    /// not HiDPI.
    [[nodiscard]] bool isHiDPI() const { return pointWidth < pixelWidth || pointHeight < pixelHeight; }

    friend bool operator==(const DisplayModeInfo&, const DisplayModeInfo&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::DisplayModeInfo> {
    std::size_t operator()(const screenweaver::DisplayModeInfo& mode) const noexcept;
};
