#include "CoreTypes/Model/KeyComboJSON.hpp"

#include "CoreTypes/Coding/RawValueForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm form{
    coding::required("keyCode", &KeyCombo::keyCode),
    coding::required("modifiers", &KeyCombo::modifiers),
};

}  // namespace

void JSONForm<KeyCombo>::write(JSONWriter& writer, const KeyCombo& combo) {
    form.write(writer, combo);
}

bool JSONForm<KeyCombo>::read(JSONReader& reader, JSONValue& value, KeyCombo& result) {
    return form.read(reader, value, result);
}

bool JSONForm<HotkeyAction>::read(JSONReader& reader, JSONValue& value, HotkeyAction& result) {
    return coding::readRawValue(reader, value, "HotkeyAction", hotkeyActionFromRawValue, result);
}

}  // namespace screenweaver
