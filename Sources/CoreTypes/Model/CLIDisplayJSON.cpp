#include "CoreTypes/Model/CLIDisplayJSON.hpp"

#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

void JSONForm<CLIDisplay>::write(JSONWriter& writer, const CLIDisplay& display) {
    writer.beginObject();
    writer.key("ref");
    writer.string(display.ref);
    if (display.name) {
        writer.key("name");
        writer.string(*display.name);
    }
    writer.key("pixelWidth");
    writer.integer(display.pixelWidth);
    writer.key("pixelHeight");
    writer.integer(display.pixelHeight);
    writer.key("pointWidth");
    writer.integer(display.pointWidth);
    writer.key("pointHeight");
    writer.integer(display.pointHeight);
    writer.key("refreshRate");
    writer.number(display.refreshRate);
    writer.key("isMain");
    writer.boolean(display.isMain);
    writer.key("isVirtual");
    writer.boolean(display.isVirtual);
    writer.key("isBuiltin");
    writer.boolean(display.isBuiltin);
    writer.endObject();
}

std::expected<CLIDisplay, DecodingError> JSONForm<CLIDisplay>::read(const JSONValue& value) {
    KeyedReader reader{value};
    CLIDisplay display;
    reader.required("ref", display.ref);
    reader.optional("name", display.name);
    reader.required("pixelWidth", display.pixelWidth);
    reader.required("pixelHeight", display.pixelHeight);
    reader.required("pointWidth", display.pointWidth);
    reader.required("pointHeight", display.pointHeight);
    reader.required("refreshRate", display.refreshRate);
    reader.required("isMain", display.isMain);
    reader.required("isVirtual", display.isVirtual);
    reader.required("isBuiltin", display.isBuiltin);
    return reader.finish(std::move(display));
}

}  // namespace screenweaver
