#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CLIDisplayEDID.hpp"
#include "CoreTypes/Model/DisplayEDIDSummaryJSON.hpp"

namespace screenweaver {

/// The raw value string.
template <>
struct JSONForm<CLIDisplayEDID::Source> {
    static void write(JSONWriter& writer, CLIDisplayEDID::Source source) { writer.string(rawValue(source)); }
    static bool read(JSONReader& reader, JSONValue& value, CLIDisplayEDID::Source& result);
};

/// "ref", "summary", "source", "isVirtual", all required.
template <>
struct JSONForm<CLIDisplayEDID> {
    static void write(JSONWriter& writer, const CLIDisplayEDID& edid);
    static bool read(JSONReader& reader, JSONValue& value, CLIDisplayEDID& result);
};

}  // namespace screenweaver
