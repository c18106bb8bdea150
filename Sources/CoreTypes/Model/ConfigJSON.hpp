#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Coding/SortedCollections.hpp"
#include "CoreTypes/Model/Config.hpp"

namespace screenweaver {

/// "schemaVersion", "groups", "activeGroupID" (only when present), "settings", "deletedGroups";
/// every key but "activeGroupID" is required. The deleted groups are the flat array alternating a
/// UUID's text and a date, sorted by the UUID text.
template <>
struct JSONForm<Config> {
    static void write(JSONWriter& writer, const Config& config);
    static bool read(JSONReader& reader, JSONValue& value, Config& result);
};

}  // namespace screenweaver
