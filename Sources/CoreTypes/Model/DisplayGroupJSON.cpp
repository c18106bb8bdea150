#include "CoreTypes/Model/DisplayGroupJSON.hpp"

#include "CoreTypes/Coding/RawValueForm.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"
#include "CoreTypes/Model/DisplayModeInfoJSON.hpp"
#include "CoreTypes/Model/DisplayRefJSON.hpp"
#include "CoreTypes/Model/GeometryJSON.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

namespace screenweaver {

namespace {

constexpr coding::RecordForm extraDockSettingsForm{
    coding::required("mode", &ExtraDockSettings::mode),
    coding::required("enabledDisplays", &ExtraDockSettings::enabledDisplays),
    coding::required("hideOnNativeDockDisplay", &ExtraDockSettings::hideOnNativeDockDisplay),
};

constexpr coding::RecordForm groupForm{
    coding::required("id", &DisplayGroup::id),
    coding::required("name", &DisplayGroup::name),
    coding::required("symbol", &DisplayGroup::symbol),
    coding::required("displays", &DisplayGroup::displays),
    coding::required("mainDisplayRef", &DisplayGroup::mainDisplayRef),
    coding::required("layout", &DisplayGroup::layout),
    coding::required("includePhysicalDisplays", &DisplayGroup::includePhysicalDisplays),
    coding::required("modes", &DisplayGroup::modes),
    coding::required("protectedDisplays", &DisplayGroup::protectedDisplays),
    coding::optional("hotkey", &DisplayGroup::hotkey),
    coding::required("activateOnLaunch", &DisplayGroup::activateOnLaunch),
    coding::required("extraDockSettings", &DisplayGroup::extraDockSettings),
    coding::required("modifiedAt", &DisplayGroup::modifiedAt),
};

}  // namespace

bool JSONForm<ExtraDockMode>::read(JSONReader& reader, JSONValue& value, ExtraDockMode& result) {
    return coding::readRawValue(reader, value, "ExtraDockMode", extraDockModeFromRawValue, result);
}

void JSONForm<ExtraDockSettings>::write(JSONWriter& writer, const ExtraDockSettings& settings) {
    extraDockSettingsForm.write(writer, settings);
}

bool JSONForm<ExtraDockSettings>::read(JSONReader& reader, JSONValue& value, ExtraDockSettings& result) {
    return extraDockSettingsForm.read(reader, value, result);
}

void JSONForm<DisplayGroup>::write(JSONWriter& writer, const DisplayGroup& group) {
    groupForm.write(writer, group);
}

// Flattened: the forms of every member are inlined into this one function, which reads most of
// a document, so reading a member makes no call (measured: a three-group document 5% faster).
[[gnu::flatten]] bool JSONForm<DisplayGroup>::read(JSONReader& reader, JSONValue& value,
                                                   DisplayGroup& result) {
    return groupForm.read(reader, value, result);
}

}  // namespace screenweaver
