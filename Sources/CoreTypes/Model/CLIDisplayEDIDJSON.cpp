#include "CoreTypes/Model/CLIDisplayEDIDJSON.hpp"

#include "CoreTypes/Coding/RawValueForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::required("ref", &CLIDisplayEDID::ref),
    coding::required("summary", &CLIDisplayEDID::summary),
    coding::required("source", &CLIDisplayEDID::source),
    coding::required("isVirtual", &CLIDisplayEDID::isVirtual),
};

}  // namespace

bool JSONForm<CLIDisplayEDID::Source>::read(JSONReader& reader, JSONValue& value,
                                            CLIDisplayEDID::Source& result) {
    return coding::readRawValue(reader, value, "Source", cliDisplayEDIDSourceFromRawValue, result);
}

void JSONForm<CLIDisplayEDID>::write(JSONWriter& writer, const CLIDisplayEDID& edid) {
    form.write(writer, edid);
}

bool JSONForm<CLIDisplayEDID>::read(JSONReader& reader, JSONValue& value, CLIDisplayEDID& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
