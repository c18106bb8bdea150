#pragma once

#include <unordered_map>

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/Config.hpp"

namespace screenweaver {

/// The deleted groups: the flat array alternating a UUID's text and a date, sorted by the UUID
/// text.
template <>
struct JSONForm<std::unordered_map<UUID, Date>> {
    static void write(JSONWriter& writer, const std::unordered_map<UUID, Date>& map);
    static std::expected<std::unordered_map<UUID, Date>, DecodingError> read(const JSONValue& value);
};

/// "schemaVersion", "groups", "activeGroupID" (only when present), "settings", "deletedGroups";
/// every key but "activeGroupID" is required.
template <>
struct JSONForm<Config> {
    static void write(JSONWriter& writer, const Config& config);
    static std::expected<Config, DecodingError> read(const JSONValue& value);
};

}  // namespace screenweaver
