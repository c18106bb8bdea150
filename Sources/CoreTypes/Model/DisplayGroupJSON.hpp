#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/DisplayGroup.hpp"
#include "CoreTypes/Model/ExtraDockMode.hpp"
#include "CoreTypes/Model/ExtraDockSettings.hpp"

namespace screenweaver {

/// The raw value string.
template <>
struct JSONForm<ExtraDockMode> {
    static void write(JSONWriter& writer, ExtraDockMode mode) { writer.string(rawValue(mode)); }
    static bool read(JSONReader& reader, JSONValue& value, ExtraDockMode& result);
};

/// "mode", "enabledDisplays", "hideOnNativeDockDisplay", all required: a missing key is an error,
/// never the default settings.
template <>
struct JSONForm<ExtraDockSettings> {
    static void write(JSONWriter& writer, const ExtraDockSettings& settings);
    static bool read(JSONReader& reader, JSONValue& value, ExtraDockSettings& result);
};

/// Keys in field order; "hotkey" is left out when absent and reads as absent when missing or
/// null; every other key is required. "layout" and "modes" are alternating arrays of reference
/// and value.
template <>
struct JSONForm<DisplayGroup> {
    static void write(JSONWriter& writer, const DisplayGroup& group);
    static bool read(JSONReader& reader, JSONValue& value, DisplayGroup& result);
};

}  // namespace screenweaver
