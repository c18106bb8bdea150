#include "CoreTypes/Model/DisplayModeInfoJSON.hpp"

#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

void JSONForm<DisplayModeInfo>::write(JSONWriter& writer, const DisplayModeInfo& mode) {
    writer.beginObject();
    writer.key("pixelWidth");
    writer.integer(mode.pixelWidth);
    writer.key("pixelHeight");
    writer.integer(mode.pixelHeight);
    writer.key("pointWidth");
    writer.integer(mode.pointWidth);
    writer.key("pointHeight");
    writer.integer(mode.pointHeight);
    writer.key("refreshRate");
    writer.number(mode.refreshRate);
    writer.endObject();
}

std::expected<DisplayModeInfo, DecodingError> JSONForm<DisplayModeInfo>::read(const JSONValue& value) {
    KeyedReader reader{value};
    DisplayModeInfo mode;
    reader.required("pixelWidth", mode.pixelWidth);
    reader.required("pixelHeight", mode.pixelHeight);
    reader.required("pointWidth", mode.pointWidth);
    reader.required("pointHeight", mode.pointHeight);
    reader.required("refreshRate", mode.refreshRate);
    return reader.finish(mode);
}

}  // namespace screenweaver
