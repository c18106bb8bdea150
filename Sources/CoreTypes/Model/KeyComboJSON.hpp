#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/HotkeyAction.hpp"
#include "CoreTypes/Model/KeyCombo.hpp"

namespace screenweaver {

/// "keyCode" then "modifiers", both required.
template <>
struct JSONForm<KeyCombo> {
    static void write(JSONWriter& writer, const KeyCombo& combo);
    static bool read(JSONReader& reader, JSONValue& value, KeyCombo& result);
};

/// The raw value string.
template <>
struct JSONForm<HotkeyAction> {
    static void write(JSONWriter& writer, HotkeyAction action) { writer.string(rawValue(action)); }
    static bool read(JSONReader& reader, JSONValue& value, HotkeyAction& result);
};

}  // namespace screenweaver
