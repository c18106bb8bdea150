#include "CoreTypes/Model/AppSettingsJSON.hpp"

#include "CoreTypes/Coding/RawValueForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"

namespace screenweaver {

namespace {

// Reading starts from the defaults, which a fresh record holds, and overwrites what the object
// carries.
constexpr coding::RecordForm form{
    coding::ifPresent("launchAtLogin", &AppSettings::launchAtLogin),
    coding::ifPresent("virtualDisplaysEnabled", &AppSettings::virtualDisplaysEnabled),
    coding::ifPresent("autoCaptureLayout", &AppSettings::autoCaptureLayout),
    coding::ifPresent("showMenuBarLabel", &AppSettings::showMenuBarLabel),
    coding::ifPresent("confirmBeforeSwitch", &AppSettings::confirmBeforeSwitch),
    coding::ifPresent("interceptBrightnessKeys", &AppSettings::interceptBrightnessKeys),
    coding::ifPresent("syncGroupsToICloud", &AppSettings::syncGroupsToICloud),
    coding::ifPresent("automaticUpdateChecks", &AppSettings::automaticUpdateChecks),
    coding::ifPresent("loginWindowService", &AppSettings::loginWindowService),
    coding::optional("lastUpdateCheckAt", &AppSettings::lastUpdateCheckAt),
    coding::optional("skippedUpdateVersion", &AppSettings::skippedUpdateVersion),
    // Always written, null included: a switched-off hot key must not read back as the preset one,
    // which a missing key keeps.
    coding::nullable("sleepDisplaysHotkey", &AppSettings::sleepDisplaysHotkey),
};

}  // namespace

bool JSONForm<LoginWindowServiceConsent>::read(JSONReader& reader, JSONValue& value,
                                               LoginWindowServiceConsent& result) {
    return coding::readRawValue(reader, value, "LoginWindowServiceConsent",
                                loginWindowServiceConsentFromRawValue, result);
}

void JSONForm<AppSettings>::write(JSONWriter& writer, const AppSettings& settings) {
    form.write(writer, settings);
}

bool JSONForm<AppSettings>::read(JSONReader& reader, JSONValue& value, AppSettings& result) {
    return form.read(reader, value, result);
}

}  // namespace screenweaver
