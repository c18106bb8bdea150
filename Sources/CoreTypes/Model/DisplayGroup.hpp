#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "CoreTypes/Model/Date.hpp"
#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayRefCollections.hpp"
#include "CoreTypes/Model/ExtraDockSettings.hpp"
#include "CoreTypes/Model/Geometry.hpp"
#include "CoreTypes/Model/KeyCombo.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// A saved arrangement the user switches to as a whole. Every display in it is named by a
/// reference, never by a display ID.
struct DisplayGroup {
    UUID id{};
    std::string name{};
    /// Name of the icon shown for the group.
    std::string symbol{};
    /// The virtual displays the group creates, in order.
    std::vector<VirtualDisplaySpec> displays{};
    DisplayRef mainDisplayRef{};
    /// Origin of each display in global display coordinates.
    DisplayRefMap<Point> layout{};
    /// The physical displays take part in the arrangement.
    bool includePhysicalDisplays = false;
    /// Mode to set on each display named.
    DisplayRefMap<DisplayModeInfo> modes{};
    /// Displays the group must leave alone.
    DisplayRefSet protectedDisplays{};
    std::optional<KeyCombo> hotkey{};
    bool activateOnLaunch = false;
    ExtraDockSettings extraDockSettings{};
    /// Time of the last change, as `stamp` makes it.
    Date modifiedAt{};

    /// The value to store in `modifiedAt`: `date` rounded down (toward minus infinity) to a whole
    /// second. The member-wise constructor stores `modifiedAt` as given; it does not stamp.
    static Date stamp(const Date& date);

    friend bool operator==(const DisplayGroup&, const DisplayGroup&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::DisplayGroup> {
    std::size_t operator()(const screenweaver::DisplayGroup& group) const noexcept;
};
