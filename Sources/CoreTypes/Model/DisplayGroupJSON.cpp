#include "CoreTypes/Model/DisplayGroupJSON.hpp"

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"
#include "CoreTypes/Model/DisplayModeInfoJSON.hpp"
#include "CoreTypes/Model/DisplayRefJSON.hpp"
#include "CoreTypes/Model/GeometryJSON.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

namespace screenweaver {

std::expected<ExtraDockMode, DecodingError> JSONForm<ExtraDockMode>::read(const JSONValue& value) {
    return coding::readRawValue<ExtraDockMode>(value, "ExtraDockMode", extraDockModeFromRawValue);
}

void JSONForm<ExtraDockSettings>::write(JSONWriter& writer, const ExtraDockSettings& settings) {
    writer.beginObject();
    writer.key("mode");
    JSONForm<ExtraDockMode>::write(writer, settings.mode);
    writer.key("enabledDisplays");
    JSONForm<std::unordered_set<DisplayRef>>::write(writer, settings.enabledDisplays);
    writer.key("hideOnNativeDockDisplay");
    writer.boolean(settings.hideOnNativeDockDisplay);
    writer.endObject();
}

std::expected<ExtraDockSettings, DecodingError> JSONForm<ExtraDockSettings>::read(const JSONValue& value) {
    KeyedReader reader{value};
    ExtraDockSettings settings;
    reader.required("mode", settings.mode);
    reader.required("enabledDisplays", settings.enabledDisplays);
    reader.required("hideOnNativeDockDisplay", settings.hideOnNativeDockDisplay);
    return reader.finish(std::move(settings));
}

void JSONForm<DisplayGroup>::write(JSONWriter& writer, const DisplayGroup& group) {
    writer.beginObject();
    writer.key("id");
    JSONForm<UUID>::write(writer, group.id);
    writer.key("name");
    writer.string(group.name);
    writer.key("symbol");
    writer.string(group.symbol);
    writer.key("displays");
    JSONForm<std::vector<VirtualDisplaySpec>>::write(writer, group.displays);
    writer.key("mainDisplayRef");
    JSONForm<DisplayRef>::write(writer, group.mainDisplayRef);
    writer.key("layout");
    JSONForm<std::unordered_map<DisplayRef, Point>>::write(writer, group.layout);
    writer.key("includePhysicalDisplays");
    writer.boolean(group.includePhysicalDisplays);
    writer.key("modes");
    JSONForm<std::unordered_map<DisplayRef, DisplayModeInfo>>::write(writer, group.modes);
    writer.key("protectedDisplays");
    JSONForm<std::unordered_set<DisplayRef>>::write(writer, group.protectedDisplays);
    if (group.hotkey) {
        writer.key("hotkey");
        JSONForm<KeyCombo>::write(writer, *group.hotkey);
    }
    writer.key("activateOnLaunch");
    writer.boolean(group.activateOnLaunch);
    writer.key("extraDockSettings");
    JSONForm<ExtraDockSettings>::write(writer, group.extraDockSettings);
    writer.key("modifiedAt");
    JSONForm<Date>::write(writer, group.modifiedAt);
    writer.endObject();
}

std::expected<DisplayGroup, DecodingError> JSONForm<DisplayGroup>::read(const JSONValue& value) {
    KeyedReader reader{value};
    DisplayGroup group;
    reader.required("id", group.id);
    reader.required("name", group.name);
    reader.required("symbol", group.symbol);
    reader.required("displays", group.displays);
    reader.required("mainDisplayRef", group.mainDisplayRef);
    reader.required("layout", group.layout);
    reader.required("includePhysicalDisplays", group.includePhysicalDisplays);
    reader.required("modes", group.modes);
    reader.required("protectedDisplays", group.protectedDisplays);
    reader.optional("hotkey", group.hotkey);
    reader.required("activateOnLaunch", group.activateOnLaunch);
    reader.required("extraDockSettings", group.extraDockSettings);
    reader.required("modifiedAt", group.modifiedAt);
    return reader.finish(std::move(group));
}

}  // namespace screenweaver
