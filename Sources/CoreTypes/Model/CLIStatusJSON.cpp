#include "CoreTypes/Model/CLIStatusJSON.hpp"

#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::optional("appVersion", &CLIStatus::appVersion),
    coding::optional("activeGroupName", &CLIStatus::activeGroupName),
    coding::required("groupNames", &CLIStatus::groupNames),
    coding::required("stateDescription", &CLIStatus::stateDescription),
    coding::optional("cloudSync", &CLIStatus::cloudSync),
    coding::optional("loginWindowService", &CLIStatus::loginWindowService),
};

}  // namespace

void JSONForm<CLIStatus>::write(JSONWriter& writer, const CLIStatus& status) {
    form.write(writer, status);
}

bool JSONForm<CLIStatus>::read(JSONReader& reader, JSONValue& value, CLIStatus& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
