#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/AppSettings.hpp"
#include "CoreTypes/Model/LoginWindowServiceConsent.hpp"

namespace screenweaver {

/// The raw value string.
template <>
struct JSONForm<LoginWindowServiceConsent> {
    static void write(JSONWriter& writer, LoginWindowServiceConsent consent) {
        writer.string(rawValue(consent));
    }
    static bool read(JSONReader& reader, JSONValue& value, LoginWindowServiceConsent& result);
};

/// Written with the six leading flags, then "syncGroupsToICloud", "automaticUpdateChecks",
/// "loginWindowService", the two optional update keys when present, and "sleepDisplaysHotkey",
/// null when there is no hot key. Read from the defaults: a missing or null key keeps its
/// default, except that a null "sleepDisplaysHotkey" switches the hot key off.
template <>
struct JSONForm<AppSettings> {
    static void write(JSONWriter& writer, const AppSettings& settings);
    static bool read(JSONReader& reader, JSONValue& value, AppSettings& result);
};

}  // namespace screenweaver
