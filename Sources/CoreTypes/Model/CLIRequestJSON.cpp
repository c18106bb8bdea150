#include "CoreTypes/Model/CLIRequestJSON.hpp"

#include "CoreTypes/Coding/CaseForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

// In declaration order, which is the order of the variant's alternatives. The cases without
// payload hold an empty object, and take any object.
constexpr auto form = coding::caseForm<CLIRequest>(
    {"list", "activate", "deactivate", "capture", "status", "displays", "displayEDID", "protectDisplay"},
    coding::RecordForm{}, coding::RecordForm{coding::required("group", &CLIRequest::Activate::group)},
    coding::RecordForm{}, coding::RecordForm{coding::optional("group", &CLIRequest::Capture::group)},
    coding::RecordForm{}, coding::RecordForm{},
    coding::RecordForm{coding::required("ref", &CLIRequest::DisplayEDID::ref)},
    coding::RecordForm{coding::required("ref", &CLIRequest::ProtectDisplay::ref),
                       coding::required("isProtected", &CLIRequest::ProtectDisplay::isProtected)});

}  // namespace

void JSONForm<CLIRequest>::write(JSONWriter& writer, const CLIRequest& request) {
    form.write(writer, request);
}

bool JSONForm<CLIRequest>::read(JSONReader& reader, JSONValue& value, CLIRequest& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
