#pragma once

#include <vector>

#include "CoreTypes/Model/DisplayModeInfo.hpp"

/// The order in which a display's modes are offered.
namespace screenweaver::ModeList {

/// `modes` without duplicates (equal in all five fields, the refresh rate compared exactly; the
/// first occurrence wins), sorted stably by pixel area, then refresh rate, then point width, then
/// point height, each larger first. A pixel area beyond 64 bits is a fatal error.
[[nodiscard]] std::vector<DisplayModeInfo> normalized(const std::vector<DisplayModeInfo>& modes);

}  // namespace screenweaver::ModeList
