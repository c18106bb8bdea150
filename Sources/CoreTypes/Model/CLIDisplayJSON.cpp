#include "CoreTypes/Model/CLIDisplayJSON.hpp"

#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::required("ref", &CLIDisplay::ref),
    coding::optional("name", &CLIDisplay::name),
    coding::required("pixelWidth", &CLIDisplay::pixelWidth),
    coding::required("pixelHeight", &CLIDisplay::pixelHeight),
    coding::required("pointWidth", &CLIDisplay::pointWidth),
    coding::required("pointHeight", &CLIDisplay::pointHeight),
    coding::required("refreshRate", &CLIDisplay::refreshRate),
    coding::required("isMain", &CLIDisplay::isMain),
    coding::required("isVirtual", &CLIDisplay::isVirtual),
    coding::required("isBuiltin", &CLIDisplay::isBuiltin),
};

}  // namespace

void JSONForm<CLIDisplay>::write(JSONWriter& writer, const CLIDisplay& display) {
    form.write(writer, display);
}

bool JSONForm<CLIDisplay>::read(JSONReader& reader, JSONValue& value, CLIDisplay& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
