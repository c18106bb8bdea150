#pragma once

#include <functional>

#include "CoreTypes/Model/DisplayRefCollections.hpp"
#include "CoreTypes/Model/ExtraDockMode.hpp"

namespace screenweaver {

/// Extra Dock behaviour while a group is active.
struct ExtraDockSettings {
    ExtraDockMode mode = ExtraDockMode::off;
    /// The displays that get a Dock when `mode` is `perDisplay`.
    DisplayRefSet enabledDisplays{};
    /// No extra Dock on the display that already shows the system Dock.
    bool hideOnNativeDockDisplay = true;

    /// `off`, no displays, hiding on the system Dock's display; built once and shared.
    static const ExtraDockSettings& defaults();

    friend bool operator==(const ExtraDockSettings&, const ExtraDockSettings&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::ExtraDockSettings> {
    std::size_t operator()(const screenweaver::ExtraDockSettings& settings) const noexcept;
};
