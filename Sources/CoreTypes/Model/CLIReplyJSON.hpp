#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CLIDisplayEDIDJSON.hpp"
#include "CoreTypes/Model/CLIDisplayJSON.hpp"
#include "CoreTypes/Model/CLIReply.hpp"
#include "CoreTypes/Model/CLIStatusJSON.hpp"

namespace screenweaver {

/// One key naming the case, holding an object whose "_0" is the payload: {"ok":{"_0":s}},
/// {"groups":{"_0":[...]}}, {"status":{"_0":{...}}}.
template <>
struct JSONForm<CLIReply> {
    static void write(JSONWriter& writer, const CLIReply& reply);
    static bool read(JSONReader& reader, JSONValue& value, CLIReply& result);
};

}  // namespace screenweaver
