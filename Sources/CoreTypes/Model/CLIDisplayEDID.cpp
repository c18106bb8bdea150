#include "CoreTypes/Model/CLIDisplayEDID.hpp"

namespace screenweaver {

std::string_view rawValue(CLIDisplayEDID::Source source) {
    switch (source) {
        case CLIDisplayEDID::Source::panel:
            return "panel";
        case CLIDisplayEDID::Source::system:
            return "system";
    }
    return "panel";
}

std::optional<CLIDisplayEDID::Source> cliDisplayEDIDSourceFromRawValue(std::string_view raw) {
    for (const auto source : {CLIDisplayEDID::Source::panel, CLIDisplayEDID::Source::system}) {
        if (rawValue(source) == raw) {
            return source;
        }
    }
    return std::nullopt;
}

}  // namespace screenweaver
