#include "CoreTypes/Model/AppSettingsJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"

namespace screenweaver {

std::expected<LoginWindowServiceConsent, DecodingError> JSONForm<LoginWindowServiceConsent>::read(
    const JSONValue& value) {
    return coding::readRawValue<LoginWindowServiceConsent>(value, "LoginWindowServiceConsent",
                                                           loginWindowServiceConsentFromRawValue);
}

void JSONForm<AppSettings>::write(JSONWriter& writer, const AppSettings& settings) {
    writer.beginObject();
    writer.key("launchAtLogin");
    writer.boolean(settings.launchAtLogin);
    writer.key("virtualDisplaysEnabled");
    writer.boolean(settings.virtualDisplaysEnabled);
    writer.key("autoCaptureLayout");
    writer.boolean(settings.autoCaptureLayout);
    writer.key("showMenuBarLabel");
    writer.boolean(settings.showMenuBarLabel);
    writer.key("confirmBeforeSwitch");
    writer.boolean(settings.confirmBeforeSwitch);
    writer.key("interceptBrightnessKeys");
    writer.boolean(settings.interceptBrightnessKeys);
    writer.key("syncGroupsToICloud");
    writer.boolean(settings.syncGroupsToICloud);
    writer.key("automaticUpdateChecks");
    writer.boolean(settings.automaticUpdateChecks);
    writer.key("loginWindowService");
    JSONForm<LoginWindowServiceConsent>::write(writer, settings.loginWindowService);
    if (settings.lastUpdateCheckAt) {
        writer.key("lastUpdateCheckAt");
        JSONForm<Date>::write(writer, *settings.lastUpdateCheckAt);
    }
    if (settings.skippedUpdateVersion) {
        writer.key("skippedUpdateVersion");
        writer.string(*settings.skippedUpdateVersion);
    }
    // Always written, null included: a switched-off hot key must not read back as the default.
    writer.key("sleepDisplaysHotkey");
    if (settings.sleepDisplaysHotkey) {
        JSONForm<KeyCombo>::write(writer, *settings.sleepDisplaysHotkey);
    } else {
        writer.null();
    }
    writer.endObject();
}

std::expected<AppSettings, DecodingError> JSONForm<AppSettings>::read(const JSONValue& value) {
    KeyedReader reader{value};
    AppSettings settings = AppSettings::defaults();
    reader.ifPresent("launchAtLogin", settings.launchAtLogin);
    reader.ifPresent("virtualDisplaysEnabled", settings.virtualDisplaysEnabled);
    reader.ifPresent("autoCaptureLayout", settings.autoCaptureLayout);
    reader.ifPresent("showMenuBarLabel", settings.showMenuBarLabel);
    reader.ifPresent("confirmBeforeSwitch", settings.confirmBeforeSwitch);
    reader.ifPresent("interceptBrightnessKeys", settings.interceptBrightnessKeys);
    reader.ifPresent("syncGroupsToICloud", settings.syncGroupsToICloud);
    reader.ifPresent("automaticUpdateChecks", settings.automaticUpdateChecks);
    reader.ifPresent("loginWindowService", settings.loginWindowService);
    reader.optional("lastUpdateCheckAt", settings.lastUpdateCheckAt);
    reader.optional("skippedUpdateVersion", settings.skippedUpdateVersion);
    // Missing keeps the preset combination; null switches the hot key off.
    if (const auto hotkey = reader.member("sleepDisplaysHotkey")) {
        if (hotkey->is_null()) {
            settings.sleepDisplaysHotkey.reset();
        } else {
            KeyCombo combo;
            if (reader.store("sleepDisplaysHotkey", *hotkey, combo)) {
                settings.sleepDisplaysHotkey = combo;
            }
        }
    }
    return reader.finish(std::move(settings));
}

}  // namespace screenweaver
