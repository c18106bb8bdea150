#include "CoreTypes/Model/CLIDisplayEDIDJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

std::expected<CLIDisplayEDID::Source, DecodingError> JSONForm<CLIDisplayEDID::Source>::read(
    const JSONValue& value) {
    return coding::readRawValue<CLIDisplayEDID::Source>(value, "Source", cliDisplayEDIDSourceFromRawValue);
}

void JSONForm<CLIDisplayEDID>::write(JSONWriter& writer, const CLIDisplayEDID& edid) {
    writer.beginObject();
    writer.key("ref");
    writer.string(edid.ref);
    writer.key("summary");
    JSONForm<DisplayEDIDSummary>::write(writer, edid.summary);
    writer.key("source");
    JSONForm<CLIDisplayEDID::Source>::write(writer, edid.source);
    writer.key("isVirtual");
    writer.boolean(edid.isVirtual);
    writer.endObject();
}

std::expected<CLIDisplayEDID, DecodingError> JSONForm<CLIDisplayEDID>::read(const JSONValue& value) {
    KeyedReader reader{value};
    CLIDisplayEDID edid;
    reader.required("ref", edid.ref);
    reader.required("summary", edid.summary);
    reader.required("source", edid.source);
    reader.required("isVirtual", edid.isVirtual);
    return reader.finish(std::move(edid));
}

}  // namespace screenweaver
