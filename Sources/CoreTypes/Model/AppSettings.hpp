#pragma once

#include <functional>
#include <optional>
#include <string>

#include "CoreTypes/Model/Date.hpp"
#include "CoreTypes/Model/HotkeyAction.hpp"
#include "CoreTypes/Model/KeyCombo.hpp"
#include "CoreTypes/Model/LoginWindowServiceConsent.hpp"

namespace screenweaver {

/// The user's settings. The member defaults are those of `defaults()`: four flags are on
/// (`virtualDisplaysEnabled`, `confirmBeforeSwitch`, `automaticUpdateChecks`,
/// `syncGroupsToICloud`), the others off, and the sleep hot key is preset rather than empty.
struct AppSettings {
    bool launchAtLogin = false;
    bool virtualDisplaysEnabled = true;
    bool autoCaptureLayout = false;
    bool showMenuBarLabel = false;
    bool confirmBeforeSwitch = true;
    bool interceptBrightnessKeys = false;
    LoginWindowServiceConsent loginWindowService = LoginWindowServiceConsent::notAsked;
    bool automaticUpdateChecks = true;
    std::optional<Date> lastUpdateCheckAt{};
    /// The update version the user chose to skip.
    std::optional<std::string> skippedUpdateVersion{};
    /// Absent when the user switched the hot key off.
    std::optional<KeyCombo> sleepDisplaysHotkey = defaultCombo(HotkeyAction::sleepDisplays);
    bool syncGroupsToICloud = true;

    /// The settings of a fresh document; built once and shared.
    static const AppSettings& defaults();

    friend bool operator==(const AppSettings&, const AppSettings&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::AppSettings> {
    std::size_t operator()(const screenweaver::AppSettings& settings) const noexcept;
};
