#include "CoreTypes/Model/KeyComboJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

void JSONForm<KeyCombo>::write(JSONWriter& writer, const KeyCombo& combo) {
    writer.beginObject();
    writer.key("keyCode");
    writer.unsignedInteger(combo.keyCode);
    writer.key("modifiers");
    writer.unsignedInteger(combo.modifiers);
    writer.endObject();
}

std::expected<KeyCombo, DecodingError> JSONForm<KeyCombo>::read(const JSONValue& value) {
    KeyedReader reader{value};
    KeyCombo combo;
    reader.required("keyCode", combo.keyCode);
    reader.required("modifiers", combo.modifiers);
    return reader.finish(combo);
}

std::expected<HotkeyAction, DecodingError> JSONForm<HotkeyAction>::read(const JSONValue& value) {
    return coding::readRawValue<HotkeyAction>(value, "HotkeyAction", hotkeyActionFromRawValue);
}

}  // namespace screenweaver
