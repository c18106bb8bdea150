#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

std::expected<DynamicRange, DecodingError> JSONForm<DynamicRange>::read(const JSONValue& value) {
    return coding::readRawValue<DynamicRange>(value, "DynamicRange", dynamicRangeFromRawValue);
}

void JSONForm<VirtualDisplaySpec>::write(JSONWriter& writer, const VirtualDisplaySpec& spec) {
    writer.beginObject();
    writer.key("id");
    JSONForm<UUID>::write(writer, spec.id);
    writer.key("name");
    writer.string(spec.name);
    if (spec.catalogEntryID) {
        writer.key("catalogEntryID");
        writer.string(*spec.catalogEntryID);
    }
    writer.key("pixelWidth");
    writer.integer(spec.pixelWidth);
    writer.key("pixelHeight");
    writer.integer(spec.pixelHeight);
    writer.key("refreshRate");
    writer.number(spec.refreshRate);
    writer.key("hiDPI");
    writer.boolean(spec.hiDPI);
    writer.key("rotation");
    writer.integer(spec.rotation);
    writer.key("dynamicRange");
    JSONForm<DynamicRange>::write(writer, spec.dynamicRange);
    if (spec.targetPPIOverride) {
        writer.key("targetPPIOverride");
        writer.number(*spec.targetPPIOverride);
    }
    writer.endObject();
}

std::expected<VirtualDisplaySpec, DecodingError> JSONForm<VirtualDisplaySpec>::read(const JSONValue& value) {
    KeyedReader reader{value};
    VirtualDisplaySpec spec;
    reader.required("id", spec.id);
    reader.required("name", spec.name);
    reader.optional("catalogEntryID", spec.catalogEntryID);
    reader.required("pixelWidth", spec.pixelWidth);
    reader.required("pixelHeight", spec.pixelHeight);
    reader.required("refreshRate", spec.refreshRate);
    reader.required("hiDPI", spec.hiDPI);
    reader.required("rotation", spec.rotation);
    reader.required("dynamicRange", spec.dynamicRange);
    reader.optional("targetPPIOverride", spec.targetPPIOverride);
    return reader.finish(std::move(spec));
}

}  // namespace screenweaver
