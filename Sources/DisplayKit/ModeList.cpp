#include "DisplayKit/ModeList.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <unordered_set>

namespace screenweaver::ModeList {

namespace {

struct RankedMode {
    std::int64_t area;
    DisplayModeInfo mode;
};

std::int64_t pixelArea(const DisplayModeInfo& mode) {
    std::int64_t area = 0;
    if (__builtin_mul_overflow(mode.pixelWidth, mode.pixelHeight, &area)) {
        // No display reports such a mode; a list that does is corrupt beyond recovery.
        std::fputs("fatal error: display mode pixel area overflows 64 bits\n", stderr);
        std::abort();
    }
    return area;
}

}  // namespace

std::vector<DisplayModeInfo> normalized(const std::vector<DisplayModeInfo>& modes) {
    std::unordered_set<DisplayModeInfo> kept;
    std::vector<RankedMode> ranked;
    ranked.reserve(modes.size());
    for (const auto& mode : modes) {
        if (kept.insert(mode).second) {
            ranked.push_back({pixelArea(mode), mode});
        }
    }
    std::ranges::stable_sort(ranked, [](const RankedMode& lhs, const RankedMode& rhs) {
        if (lhs.area != rhs.area) {
            return lhs.area > rhs.area;
        }
        if (lhs.mode.refreshRate != rhs.mode.refreshRate) {
            return lhs.mode.refreshRate > rhs.mode.refreshRate;
        }
        if (lhs.mode.pointWidth != rhs.mode.pointWidth) {
            return lhs.mode.pointWidth > rhs.mode.pointWidth;
        }
        return lhs.mode.pointHeight > rhs.mode.pointHeight;
    });
    std::vector<DisplayModeInfo> result;
    result.reserve(ranked.size());
    for (const auto& entry : ranked) {
        result.push_back(entry.mode);
    }
    return result;
}

}  // namespace screenweaver::ModeList
