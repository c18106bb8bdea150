#include "CoreTypes/Model/HotkeyAction.hpp"

namespace screenweaver {

std::string_view rawValue(HotkeyAction action) {
    switch (action) {
        case HotkeyAction::sleepDisplays:
            return "sleepDisplays";
    }
    return "sleepDisplays";
}

std::optional<HotkeyAction> hotkeyActionFromRawValue(std::string_view raw) {
    for (const HotkeyAction action : allHotkeyActions) {
        if (rawValue(action) == raw) {
            return action;
        }
    }
    return std::nullopt;
}

UUID id(HotkeyAction action) {
    switch (action) {
        case HotkeyAction::sleepDisplays:
            return UUID{{0x5E, 0xE9, 0x50, 0x00, 0x00, 0x00, 0x40, 0x00, 0xA0, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x01}};
    }
    return UUID{};
}

KeyCombo defaultCombo(HotkeyAction action) {
    switch (action) {
        case HotkeyAction::sleepDisplays:
            return KeyCombo{2, 0x1B00};
    }
    return KeyCombo{};
}

}  // namespace screenweaver
