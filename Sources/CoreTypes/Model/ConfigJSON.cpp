#include "CoreTypes/Model/ConfigJSON.hpp"

#include "CoreTypes/Coding/RecordForm.hpp"
#include "CoreTypes/Model/AppSettingsJSON.hpp"
#include "CoreTypes/Model/DisplayGroupJSON.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::required("schemaVersion", &Config::schemaVersion),
    coding::required("groups", &Config::groups),
    coding::optional("activeGroupID", &Config::activeGroupID),
    coding::required("settings", &Config::settings),
    coding::required("deletedGroups", &Config::deletedGroups),
};

}  // namespace

void JSONForm<Config>::write(JSONWriter& writer, const Config& config) {
    form.write(writer, config);
}

bool JSONForm<Config>::read(JSONReader& reader, JSONValue& value, Config& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
