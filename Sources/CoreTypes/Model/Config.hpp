#pragma once

#include <boost/container/flat_map.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "CoreTypes/Model/AppSettings.hpp"
#include "CoreTypes/Model/Date.hpp"
#include "CoreTypes/Model/DisplayGroup.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// The configuration document: the one thing the product persists.
struct Config {
    /// The layout version of a document this build writes.
    static constexpr std::int64_t currentSchemaVersion = 4;

    std::int64_t schemaVersion = currentSchemaVersion;
    /// The saved groups, in the user's order.
    std::vector<DisplayGroup> groups{};
    std::optional<UUID> activeGroupID{};
    AppSettings settings{};
    /// Groups that were deleted, each with the time of its deletion; a sorted array, by UUID.
    boost::container::flat_map<UUID, Date> deletedGroups{};

    /// A fresh document: the current schema, no groups, no active group, the default settings and
    /// no deleted groups; built once and shared.
    static const Config& empty();

    friend bool operator==(const Config&, const Config&) = default;
};

}  // namespace screenweaver
