#include "CoreTypes/Model/DisplayRefJSON.hpp"

#include "CoreTypes/Coding/CaseForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr auto form = coding::caseForm<DisplayRef>(
    {"virtual", "physical"}, coding::RecordForm{coding::required("_0", &DisplayRef::Virtual::id)},
    coding::RecordForm{coding::required("colorSyncUUID", &DisplayRef::Physical::colorSyncUUID)});

}  // namespace

void JSONForm<DisplayRef>::write(JSONWriter& writer, const DisplayRef& ref) {
    form.write(writer, ref);
}

bool JSONForm<DisplayRef>::read(JSONReader& reader, JSONValue& value, DisplayRef& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
