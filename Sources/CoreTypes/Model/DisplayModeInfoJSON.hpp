#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/DisplayModeInfo.hpp"

namespace screenweaver {

/// Keys "pixelWidth", "pixelHeight", "pointWidth", "pointHeight", "refreshRate", all required.
template <>
struct JSONForm<DisplayModeInfo> {
    static void write(JSONWriter& writer, const DisplayModeInfo& mode);
    static bool read(JSONReader& reader, JSONValue& value, DisplayModeInfo& result);
};

}  // namespace screenweaver
