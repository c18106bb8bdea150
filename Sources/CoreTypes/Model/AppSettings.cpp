#include "CoreTypes/Model/AppSettings.hpp"

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

const AppSettings& AppSettings::defaults() {
    static const AppSettings settings{};
    return settings;
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::AppSettings>::operator()(
    const screenweaver::AppSettings& settings) const noexcept {
    return screenweaver::hashFields(
        settings.launchAtLogin, settings.virtualDisplaysEnabled, settings.autoCaptureLayout,
        settings.showMenuBarLabel, settings.confirmBeforeSwitch, settings.interceptBrightnessKeys,
        screenweaver::rawValue(settings.loginWindowService), settings.automaticUpdateChecks,
        settings.lastUpdateCheckAt, settings.skippedUpdateVersion, settings.sleepDisplaysHotkey,
        settings.syncGroupsToICloud);
}
