#include "CoreTypes/DDCControl.hpp"

#include <utility>

namespace screenweaver {

std::optional<DDCControl> ddcControl(std::uint8_t code) {
    for (const auto control : allDDCControls) {
        if (rawValue(control) == code) {
            return control;
        }
    }
    return std::nullopt;
}

std::string_view caseName(DDCControl control) {
    switch (control) {
        case DDCControl::brightness:
            return "brightness";
        case DDCControl::contrast:
            return "contrast";
        case DDCControl::volume:
            return "volume";
        case DDCControl::inputSource:
            return "inputSource";
        case DDCControl::powerMode:
            return "powerMode";
    }
    std::unreachable();
}

}  // namespace screenweaver
