#include "CoreTypes/Model/DisplayEDIDSummaryJSON.hpp"

#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::optional("manufacturerCode", &DisplayEDIDSummary::manufacturerCode),
    coding::required("vendorNumber", &DisplayEDIDSummary::vendorNumber),
    coding::required("modelNumber", &DisplayEDIDSummary::modelNumber),
    coding::required("serialNumber", &DisplayEDIDSummary::serialNumber),
    coding::optional("productName", &DisplayEDIDSummary::productName),
    coding::optional("weekOfManufacture", &DisplayEDIDSummary::weekOfManufacture),
    coding::optional("yearOfManufacture", &DisplayEDIDSummary::yearOfManufacture),
    coding::optional("nativePixelWidth", &DisplayEDIDSummary::nativePixelWidth),
    coding::optional("nativePixelHeight", &DisplayEDIDSummary::nativePixelHeight),
};

}  // namespace

void JSONForm<DisplayEDIDSummary>::write(JSONWriter& writer, const DisplayEDIDSummary& summary) {
    form.write(writer, summary);
}

bool JSONForm<DisplayEDIDSummary>::read(JSONReader& reader, JSONValue& value, DisplayEDIDSummary& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
