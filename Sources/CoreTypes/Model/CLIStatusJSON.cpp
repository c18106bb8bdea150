#include "CoreTypes/Model/CLIStatusJSON.hpp"

#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

namespace {

void writeIfPresent(JSONWriter& writer, std::string_view key, const std::optional<std::string>& value) {
    if (value) {
        writer.key(key);
        writer.string(*value);
    }
}

}  // namespace

void JSONForm<CLIStatus>::write(JSONWriter& writer, const CLIStatus& status) {
    writer.beginObject();
    writeIfPresent(writer, "appVersion", status.appVersion);
    writeIfPresent(writer, "activeGroupName", status.activeGroupName);
    writer.key("groupNames");
    JSONForm<std::vector<std::string>>::write(writer, status.groupNames);
    writer.key("stateDescription");
    writer.string(status.stateDescription);
    writeIfPresent(writer, "cloudSync", status.cloudSync);
    writeIfPresent(writer, "loginWindowService", status.loginWindowService);
    writer.endObject();
}

std::expected<CLIStatus, DecodingError> JSONForm<CLIStatus>::read(const JSONValue& value) {
    KeyedReader reader{value};
    CLIStatus status;
    reader.optional("appVersion", status.appVersion);
    reader.optional("activeGroupName", status.activeGroupName);
    reader.required("groupNames", status.groupNames);
    reader.required("stateDescription", status.stateDescription);
    reader.optional("cloudSync", status.cloudSync);
    reader.optional("loginWindowService", status.loginWindowService);
    return reader.finish(std::move(status));
}

}  // namespace screenweaver
