#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CLIStatus.hpp"

namespace screenweaver {

/// Keys in field order; the four optional keys are left out when absent; "groupNames" and
/// "stateDescription" are required.
template <>
struct JSONForm<CLIStatus> {
    static void write(JSONWriter& writer, const CLIStatus& status);
    static bool read(JSONReader& reader, JSONValue& value, CLIStatus& result);
};

}  // namespace screenweaver
