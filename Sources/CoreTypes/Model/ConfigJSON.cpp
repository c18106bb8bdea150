#include "CoreTypes/Model/ConfigJSON.hpp"

#include <functional>

#include "CoreTypes/Coding/AlternatingMap.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"
#include "CoreTypes/Model/AppSettingsJSON.hpp"
#include "CoreTypes/Model/DisplayGroupJSON.hpp"

namespace screenweaver {

void JSONForm<std::unordered_map<UUID, Date>>::write(JSONWriter& writer,
                                                     const std::unordered_map<UUID, Date>& map) {
    // A UUID's upper-case text sorts as its bytes do.
    coding::writeAlternatingMap(writer, map, std::less<UUID>{});
}

std::expected<std::unordered_map<UUID, Date>, DecodingError> JSONForm<std::unordered_map<UUID, Date>>::read(
    const JSONValue& value) {
    return coding::readAlternatingMap<UUID, Date>(value);
}

void JSONForm<Config>::write(JSONWriter& writer, const Config& config) {
    writer.beginObject();
    writer.key("schemaVersion");
    writer.integer(config.schemaVersion);
    writer.key("groups");
    JSONForm<std::vector<DisplayGroup>>::write(writer, config.groups);
    if (config.activeGroupID) {
        writer.key("activeGroupID");
        JSONForm<UUID>::write(writer, *config.activeGroupID);
    }
    writer.key("settings");
    JSONForm<AppSettings>::write(writer, config.settings);
    writer.key("deletedGroups");
    JSONForm<std::unordered_map<UUID, Date>>::write(writer, config.deletedGroups);
    writer.endObject();
}

std::expected<Config, DecodingError> JSONForm<Config>::read(const JSONValue& value) {
    KeyedReader reader{value};
    Config config;
    reader.required("schemaVersion", config.schemaVersion);
    reader.required("groups", config.groups);
    reader.optional("activeGroupID", config.activeGroupID);
    reader.required("settings", config.settings);
    reader.required("deletedGroups", config.deletedGroups);
    return reader.finish(std::move(config));
}

}  // namespace screenweaver
