#include "CoreTypes/Model/CLIRequestJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"
#include "CoreTypes/Overloaded.hpp"

namespace screenweaver {

namespace {

// In declaration order, which is the order of the variant's alternatives.
constexpr std::array<std::string_view, 8> caseNames{
    "list", "activate", "deactivate", "capture", "status", "displays", "displayEDID", "protectDisplay",
};

}  // namespace

void JSONForm<CLIRequest>::write(JSONWriter& writer, const CLIRequest& request) {
    writer.beginObject();
    writer.key(caseNames[request.value.index()]);
    writer.beginObject();
    std::visit(Overloaded{
                   [](const CLIRequest::List&) {},
                   [&writer](const CLIRequest::Activate& payload) {
                       writer.key("group");
                       writer.string(payload.group);
                   },
                   [](const CLIRequest::Deactivate&) {},
                   [&writer](const CLIRequest::Capture& payload) {
                       if (payload.group) {
                           writer.key("group");
                           writer.string(*payload.group);
                       }
                   },
                   [](const CLIRequest::Status&) {},
                   [](const CLIRequest::Displays&) {},
                   [&writer](const CLIRequest::DisplayEDID& payload) {
                       writer.key("ref");
                       writer.string(payload.ref);
                   },
                   [&writer](const CLIRequest::ProtectDisplay& payload) {
                       writer.key("ref");
                       writer.string(payload.ref);
                       writer.key("isProtected");
                       writer.boolean(payload.isProtected);
                   },
               },
               request.value);
    writer.endObject();
    writer.endObject();
}

std::expected<CLIRequest, DecodingError> JSONForm<CLIRequest>::read(const JSONValue& value) {
    auto member = coding::readCase(value, caseNames);
    if (!member) {
        return std::unexpected(std::move(member.error()));
    }
    KeyedReader payload{member->payload};
    CLIRequest request;
    switch (member->index) {
        case 0:
            request = CLIRequest::list();
            break;
        case 1: {
            CLIRequest::Activate activate;
            payload.required("group", activate.group);
            request.value = std::move(activate);
            break;
        }
        case 2:
            request = CLIRequest::deactivate();
            break;
        case 3: {
            CLIRequest::Capture capture;
            payload.optional("group", capture.group);
            request.value = std::move(capture);
            break;
        }
        case 4:
            request = CLIRequest::status();
            break;
        case 5:
            request = CLIRequest::displays();
            break;
        case 6: {
            CLIRequest::DisplayEDID displayEDID;
            payload.required("ref", displayEDID.ref);
            request.value = std::move(displayEDID);
            break;
        }
        default: {
            CLIRequest::ProtectDisplay protectDisplay;
            payload.required("ref", protectDisplay.ref);
            payload.required("isProtected", protectDisplay.isProtected);
            request.value = std::move(protectDisplay);
            break;
        }
    }
    auto result = payload.finish(std::move(request));
    if (!result) {
        result.error().prependKey(member->name);
    }
    return result;
}

}  // namespace screenweaver
