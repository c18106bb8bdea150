#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/Geometry.hpp"
#include "CoreTypes/VirtualDisplayVendor.hpp"

namespace screenweaver {

/// One attached display as observed. `displayID` is valid only while the display stays
/// attached; `ref` is the name that survives reconnections.
struct LiveDisplay {
    std::uint32_t displayID = 0;
    DisplayRef ref{};
    /// The name the system reports, when it reports one.
    std::optional<std::string> name{};
    std::uint32_t vendorNumber = 0;
    std::uint32_t modelNumber = 0;
    /// For this product's virtual displays, the serial derived from their VirtualDisplaySpec's id.
    std::uint32_t serialNumber = 0;
    bool isBuiltin = false;
    /// The main display is the one whose origin is (0, 0).
    bool isMain = false;
    bool isAsleep = false;
    /// Frame in global display coordinates.
    Rect bounds{};
    std::optional<DisplayModeInfo> currentMode{};

    /// Any display carrying this product's vendor number counts as one of ours; nothing else is
    /// consulted.
    [[nodiscard]] bool isOurVirtualDisplay() const { return vendorNumber == virtualDisplayVendorID; }

    friend bool operator==(const LiveDisplay&, const LiveDisplay&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::LiveDisplay> {
    std::size_t operator()(const screenweaver::LiveDisplay& display) const noexcept;
};
