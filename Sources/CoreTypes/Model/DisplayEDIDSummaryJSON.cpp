#include "CoreTypes/Model/DisplayEDIDSummaryJSON.hpp"

#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

namespace {

void writeIfPresent(JSONWriter& writer, std::string_view key, const std::optional<std::int64_t>& value) {
    if (value) {
        writer.key(key);
        writer.integer(*value);
    }
}

}  // namespace

void JSONForm<DisplayEDIDSummary>::write(JSONWriter& writer, const DisplayEDIDSummary& summary) {
    writer.beginObject();
    if (summary.manufacturerCode) {
        writer.key("manufacturerCode");
        writer.string(*summary.manufacturerCode);
    }
    writer.key("vendorNumber");
    writer.unsignedInteger(summary.vendorNumber);
    writer.key("modelNumber");
    writer.unsignedInteger(summary.modelNumber);
    writer.key("serialNumber");
    writer.unsignedInteger(summary.serialNumber);
    if (summary.productName) {
        writer.key("productName");
        writer.string(*summary.productName);
    }
    writeIfPresent(writer, "weekOfManufacture", summary.weekOfManufacture);
    writeIfPresent(writer, "yearOfManufacture", summary.yearOfManufacture);
    writeIfPresent(writer, "nativePixelWidth", summary.nativePixelWidth);
    writeIfPresent(writer, "nativePixelHeight", summary.nativePixelHeight);
    writer.endObject();
}

std::expected<DisplayEDIDSummary, DecodingError> JSONForm<DisplayEDIDSummary>::read(const JSONValue& value) {
    KeyedReader reader{value};
    DisplayEDIDSummary summary;
    reader.optional("manufacturerCode", summary.manufacturerCode);
    reader.required("vendorNumber", summary.vendorNumber);
    reader.required("modelNumber", summary.modelNumber);
    reader.required("serialNumber", summary.serialNumber);
    reader.optional("productName", summary.productName);
    reader.optional("weekOfManufacture", summary.weekOfManufacture);
    reader.optional("yearOfManufacture", summary.yearOfManufacture);
    reader.optional("nativePixelWidth", summary.nativePixelWidth);
    reader.optional("nativePixelHeight", summary.nativePixelHeight);
    return reader.finish(std::move(summary));
}

}  // namespace screenweaver
