#include "CoreTypes/Model/CLIReplyJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"
#include "CoreTypes/Overloaded.hpp"

namespace screenweaver {

namespace {

// In declaration order, which is the order of the variant's alternatives.
constexpr std::array<std::string_view, 6> caseNames{"ok", "status", "groups", "displays", "edid", "error"};

// Reads the unlabelled payload "_0" of a case into a fresh `Case`.
template <class Case, class Payload>
CLIReply readPayload(KeyedReader& reader, Payload Case::*field) {
    Case value{};
    reader.required("_0", value.*field);
    return CLIReply{std::move(value)};
}

}  // namespace

void JSONForm<CLIReply>::write(JSONWriter& writer, const CLIReply& reply) {
    writer.beginObject();
    writer.key(caseNames[reply.value.index()]);
    writer.beginObject();
    writer.key("_0");
    std::visit(Overloaded{
                   [&writer](const CLIReply::Ok& payload) { writer.string(payload.message); },
                   [&writer](const CLIReply::Status& payload) {
                       JSONForm<CLIStatus>::write(writer, payload.status);
                   },
                   [&writer](const CLIReply::Groups& payload) {
                       JSONForm<std::vector<std::string>>::write(writer, payload.names);
                   },
                   [&writer](const CLIReply::Displays& payload) {
                       JSONForm<std::vector<CLIDisplay>>::write(writer, payload.displays);
                   },
                   [&writer](const CLIReply::Edid& payload) {
                       JSONForm<CLIDisplayEDID>::write(writer, payload.edid);
                   },
                   [&writer](const CLIReply::Error& payload) { writer.string(payload.message); },
               },
               reply.value);
    writer.endObject();
    writer.endObject();
}

std::expected<CLIReply, DecodingError> JSONForm<CLIReply>::read(const JSONValue& value) {
    auto member = coding::readCase(value, caseNames);
    if (!member) {
        return std::unexpected(std::move(member.error()));
    }
    KeyedReader payload{member->payload};
    CLIReply reply;
    switch (member->index) {
        case 0:
            reply = readPayload(payload, &CLIReply::Ok::message);
            break;
        case 1:
            reply = readPayload(payload, &CLIReply::Status::status);
            break;
        case 2:
            reply = readPayload(payload, &CLIReply::Groups::names);
            break;
        case 3:
            reply = readPayload(payload, &CLIReply::Displays::displays);
            break;
        case 4:
            reply = readPayload(payload, &CLIReply::Edid::edid);
            break;
        default:
            reply = readPayload(payload, &CLIReply::Error::message);
            break;
    }
    auto result = payload.finish(std::move(reply));
    if (!result) {
        result.error().prependKey(member->name);
    }
    return result;
}

}  // namespace screenweaver
