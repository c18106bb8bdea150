#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Coding/SortedCollections.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayRefCollections.hpp"

namespace screenweaver {

/// `{"virtual":{"_0":"<UUID>"}}` or `{"physical":{"colorSyncUUID":"<text>"}}`. A `DisplayRefSet`
/// is an array of these, a `DisplayRefMap` the flat array alternating reference and value, both
/// sorted by the references' key text.
template <>
struct JSONForm<DisplayRef> {
    static void write(JSONWriter& writer, const DisplayRef& ref);
    static bool read(JSONReader& reader, JSONValue& value, DisplayRef& result);
};

}  // namespace screenweaver
