#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/DisplayEDIDSummary.hpp"

namespace screenweaver {

/// Keys in field order; the three numbers are required, the six optional keys are left out when
/// absent and read as absent when missing or null.
template <>
struct JSONForm<DisplayEDIDSummary> {
    static void write(JSONWriter& writer, const DisplayEDIDSummary& summary);
    static bool read(JSONReader& reader, JSONValue& value, DisplayEDIDSummary& result);
};

}  // namespace screenweaver
