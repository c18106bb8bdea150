#include "CoreTypes/Model/CatalogEntryJSON.hpp"

#include "CoreTypes/Coding/RawValueForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::required("id", &CatalogEntry::id),
    coding::required("vendor", &CatalogEntry::vendor),
    coding::required("family", &CatalogEntry::family),
    coding::required("name", &CatalogEntry::name),
    coding::optional("year", &CatalogEntry::year),
    coding::optional("diagonalInches", &CatalogEntry::diagonalInches),
    coding::required("pixelWidth", &CatalogEntry::pixelWidth),
    coding::required("pixelHeight", &CatalogEntry::pixelHeight),
    coding::optional("nativePPI", &CatalogEntry::nativePPI),
    coding::required("refreshRates", &CatalogEntry::refreshRates),
    coding::required("hiDPI", &CatalogEntry::hiDPI),
    coding::required("verified", &CatalogEntry::verified),
    coding::optional("notes", &CatalogEntry::notes),
};

}  // namespace

bool JSONForm<CatalogFamily>::read(JSONReader& reader, JSONValue& value, CatalogFamily& result) {
    return coding::readRawValue(reader, value, "CatalogFamily", catalogFamilyFromRawValue, result);
}

void JSONForm<CatalogEntry>::write(JSONWriter& writer, const CatalogEntry& entry) {
    form.write(writer, entry);
}

bool JSONForm<CatalogEntry>::read(JSONReader& reader, JSONValue& value, CatalogEntry& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
