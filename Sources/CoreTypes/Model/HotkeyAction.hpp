#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "CoreTypes/Model/KeyCombo.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// An action a global hot key can trigger.
enum class HotkeyAction {
    sleepDisplays,
};

/// Every case, in declaration order.
inline constexpr std::array<HotkeyAction, 1> allHotkeyActions{HotkeyAction::sleepDisplays};

/// "sleepDisplays": the JSON form.
std::string_view rawValue(HotkeyAction action);

/// The action whose raw value is exactly `raw` (case-sensitive), or nothing.
std::optional<HotkeyAction> hotkeyActionFromRawValue(std::string_view raw);

/// The action's fixed identity, the same on every run and machine:
/// 5EE95000-0000-4000-A000-000000000001 for `sleepDisplays`.
UUID id(HotkeyAction action);

/// The combination the action starts with: control + option + shift + command with D (key code
/// 2, modifiers 0x1B00) for `sleepDisplays`.
KeyCombo defaultCombo(HotkeyAction action);

}  // namespace screenweaver
