#include "CoreTypes/Model/CLIReplyJSON.hpp"

#include "CoreTypes/Coding/CaseForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

// In declaration order, which is the order of the variant's alternatives; each payload is
// unlabelled, under "_0".
constexpr auto form =
    coding::caseForm<CLIReply>({"ok", "status", "groups", "displays", "edid", "error"},
                               coding::RecordForm{coding::required("_0", &CLIReply::Ok::message)},
                               coding::RecordForm{coding::required("_0", &CLIReply::Status::status)},
                               coding::RecordForm{coding::required("_0", &CLIReply::Groups::names)},
                               coding::RecordForm{coding::required("_0", &CLIReply::Displays::displays)},
                               coding::RecordForm{coding::required("_0", &CLIReply::Edid::edid)},
                               coding::RecordForm{coding::required("_0", &CLIReply::Error::message)});

}  // namespace

void JSONForm<CLIReply>::write(JSONWriter& writer, const CLIReply& reply) {
    form.write(writer, reply);
}

bool JSONForm<CLIReply>::read(JSONReader& reader, JSONValue& value, CLIReply& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
