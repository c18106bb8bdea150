#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace screenweaver {

/// Where extra Docks are shown while a group is active.
enum class ExtraDockMode {
    off,
    allDisplays,
    perDisplay,
};

/// Every case, in declaration order.
inline constexpr std::array<ExtraDockMode, 3> allExtraDockModes{
    ExtraDockMode::off,
    ExtraDockMode::allDisplays,
    ExtraDockMode::perDisplay,
};

/// The case name, which is also the JSON form.
std::string_view rawValue(ExtraDockMode mode);

/// The case whose raw value is exactly `raw` (case-sensitive), or nothing.
std::optional<ExtraDockMode> extraDockModeFromRawValue(std::string_view raw);

}  // namespace screenweaver
