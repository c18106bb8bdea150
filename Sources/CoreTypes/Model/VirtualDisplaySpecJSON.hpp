#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/DynamicRange.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"

namespace screenweaver {

/// The raw value string.
template <>
struct JSONForm<DynamicRange> {
    static void write(JSONWriter& writer, DynamicRange range) { writer.string(rawValue(range)); }
    static bool read(JSONReader& reader, JSONValue& value, DynamicRange& result);
};

/// Keys in field order; "catalogEntryID" and "targetPPIOverride" are left out when absent and
/// read as absent when missing or null; every other key is required.
template <>
struct JSONForm<VirtualDisplaySpec> {
    static void write(JSONWriter& writer, const VirtualDisplaySpec& spec);
    static bool read(JSONReader& reader, JSONValue& value, VirtualDisplaySpec& result);
};

}  // namespace screenweaver
