#pragma once

#include <optional>
#include <string>
#include <unordered_set>

#include "CoreTypes/DDCControl.hpp"

namespace screenweaver {

/// What a monitor offers over DDC/CI.
struct DDCCapabilities {
    /// The controls the monitor answers; compared by membership.
    std::unordered_set<DDCControl> supportedControls{};
    /// The monitor's raw capability string, when it could be read.
    std::optional<std::string> capabilityString{};
    /// Brightness can be changed in software when the monitor offers no brightness control.
    bool softwareBrightnessFunctional = false;

    friend bool operator==(const DDCCapabilities&, const DDCCapabilities&) = default;
};

}  // namespace screenweaver
