#include "CoreTypes/Model/ExtraDockMode.hpp"

namespace screenweaver {

std::string_view rawValue(ExtraDockMode mode) {
    switch (mode) {
        case ExtraDockMode::off:
            return "off";
        case ExtraDockMode::allDisplays:
            return "allDisplays";
        case ExtraDockMode::perDisplay:
            return "perDisplay";
    }
    return "off";
}

std::optional<ExtraDockMode> extraDockModeFromRawValue(std::string_view raw) {
    for (const ExtraDockMode mode : allExtraDockModes) {
        if (rawValue(mode) == raw) {
            return mode;
        }
    }
    return std::nullopt;
}

}  // namespace screenweaver
