#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CLIRequest.hpp"

namespace screenweaver {

/// One key naming the case, holding an object of the payload: {"list":{}},
/// {"activate":{"group":g}}, {"capture":{}} when no group is named, {"protectDisplay":{"ref":r,
/// "isProtected":p}}. Cases without payload ignore whatever their object holds.
template <>
struct JSONForm<CLIRequest> {
    static void write(JSONWriter& writer, const CLIRequest& request);
    static bool read(JSONReader& reader, JSONValue& value, CLIRequest& result);
};

}  // namespace screenweaver
