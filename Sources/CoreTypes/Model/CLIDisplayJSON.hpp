#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CLIDisplay.hpp"

namespace screenweaver {

/// Keys in field order; "name" is left out when absent, every other key is required.
template <>
struct JSONForm<CLIDisplay> {
    static void write(JSONWriter& writer, const CLIDisplay& display);
    static bool read(JSONReader& reader, JSONValue& value, CLIDisplay& result);
};

}  // namespace screenweaver
