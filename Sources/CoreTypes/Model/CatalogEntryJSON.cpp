#include "CoreTypes/Model/CatalogEntryJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

std::expected<CatalogFamily, DecodingError> JSONForm<CatalogFamily>::read(const JSONValue& value) {
    return coding::readRawValue<CatalogFamily>(value, "CatalogFamily", catalogFamilyFromRawValue);
}

void JSONForm<CatalogEntry>::write(JSONWriter& writer, const CatalogEntry& entry) {
    writer.beginObject();
    writer.key("id");
    writer.string(entry.id);
    writer.key("vendor");
    writer.string(entry.vendor);
    writer.key("family");
    JSONForm<CatalogFamily>::write(writer, entry.family);
    writer.key("name");
    writer.string(entry.name);
    if (entry.year) {
        writer.key("year");
        writer.integer(*entry.year);
    }
    if (entry.diagonalInches) {
        writer.key("diagonalInches");
        writer.number(*entry.diagonalInches);
    }
    writer.key("pixelWidth");
    writer.integer(entry.pixelWidth);
    writer.key("pixelHeight");
    writer.integer(entry.pixelHeight);
    if (entry.nativePPI) {
        writer.key("nativePPI");
        writer.number(*entry.nativePPI);
    }
    writer.key("refreshRates");
    JSONForm<std::vector<double>>::write(writer, entry.refreshRates);
    writer.key("hiDPI");
    writer.boolean(entry.hiDPI);
    writer.key("verified");
    writer.boolean(entry.verified);
    if (entry.notes) {
        writer.key("notes");
        writer.string(*entry.notes);
    }
    writer.endObject();
}

std::expected<CatalogEntry, DecodingError> JSONForm<CatalogEntry>::read(const JSONValue& value) {
    KeyedReader reader{value};
    CatalogEntry entry;
    reader.required("id", entry.id);
    reader.required("vendor", entry.vendor);
    reader.required("family", entry.family);
    reader.required("name", entry.name);
    reader.optional("year", entry.year);
    reader.optional("diagonalInches", entry.diagonalInches);
    reader.required("pixelWidth", entry.pixelWidth);
    reader.required("pixelHeight", entry.pixelHeight);
    reader.optional("nativePPI", entry.nativePPI);
    reader.required("refreshRates", entry.refreshRates);
    reader.required("hiDPI", entry.hiDPI);
    reader.required("verified", entry.verified);
    reader.optional("notes", entry.notes);
    return reader.finish(std::move(entry));
}

}  // namespace screenweaver
