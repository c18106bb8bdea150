#include <simdjson.h>

#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/AppSettingsJSON.hpp"
#include "CoreTypes/Model/CLIDisplayEDIDJSON.hpp"
#include "CoreTypes/Model/CLIDisplayJSON.hpp"
#include "CoreTypes/Model/CLIStatusJSON.hpp"
#include "CoreTypes/Model/CatalogEntryJSON.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "CoreTypes/Model/DisplayEDIDSummaryJSON.hpp"
#include "CoreTypes/Model/DisplayGroupJSON.hpp"
#include "CoreTypes/Model/DisplayModeInfoJSON.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"
#include "ModelSamples.hpp"

namespace screenweaver {
namespace {

using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

// The object `json` rebuilt without its member `key`, or with that member's value replaced.
std::string rebuilt(const std::string& json, std::string_view key, std::optional<std::string> replacement) {
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    EXPECT_EQ(parser.parse(json).get(object), simdjson::SUCCESS);
    std::string text = "{";
    for (const auto member : object) {
        std::string value = simdjson::minify(member.value);
        if (member.key == key) {
            if (!replacement) {
                continue;
            }
            value = *replacement;
        }
        text += (text.size() > 1 ? ",\"" : "\"") + std::string{member.key} + "\":" + value;
    }
    return text + "}";
}

// A value of another JSON kind than `value`'s.
std::string wrongKind(const std::string& json, std::string_view key) {
    simdjson::dom::parser parser;
    simdjson::dom::element member;
    EXPECT_EQ(parser.parse(json).at_key(key).get(member), simdjson::SUCCESS);
    switch (member.type()) {
        case simdjson::dom::element_type::STRING:
            return "12";
        case simdjson::dom::element_type::ARRAY:
            return "{}";
        case simdjson::dom::element_type::OBJECT:
            return "[]";
        case simdjson::dom::element_type::BOOL:
            return "1";
        default:
            return "\"1\"";
    }
}

// Every member of the encoded `value`: a required one missing fails with key-not-found at its
// key; an optional one missing still decodes; any of them holding a value of the wrong kind
// fails with a type mismatch at its key.
template <class T>
void expectEveryKeyChecked(const T& value, const std::vector<std::string_view>& required,
                           const std::vector<std::string_view>& optional) {
    const std::string json = encoded(value);
    for (const auto key : required) {
        SCOPED_TRACE(key);
        expectDecodingError<T>(rebuilt(json, key, std::nullopt), Kind::keyNotFound, key,
                               "No value associated with key \"" + std::string{key} + "\".");
        const auto mistyped = decode<T>(rebuilt(json, key, wrongKind(json, key)));
        ASSERT_FALSE(mistyped.has_value());
        EXPECT_EQ(mistyped.error().kind, Kind::typeMismatch);
        EXPECT_EQ(mistyped.error().codingPath, key);
        const auto nulled = decode<T>(rebuilt(json, key, "null"));
        ASSERT_FALSE(nulled.has_value());
        EXPECT_EQ(nulled.error().kind, Kind::valueNotFound);
        EXPECT_EQ(nulled.error().codingPath, key);
    }
    for (const auto key : optional) {
        SCOPED_TRACE(key);
        EXPECT_TRUE(decode<T>(rebuilt(json, key, std::nullopt)).has_value());
        EXPECT_TRUE(decode<T>(rebuilt(json, key, "null")).has_value());
        const auto mistyped = decode<T>(rebuilt(json, key, wrongKind(json, key)));
        ASSERT_FALSE(mistyped.has_value());
        EXPECT_EQ(mistyped.error().kind, Kind::typeMismatch);
        EXPECT_EQ(mistyped.error().codingPath, key);
    }
}

TEST(Rejection, VirtualDisplaySpecChecksEveryKey) {
    expectEveryKeyChecked(
        testing::sampleConfig().groups[0].displays[0],
        {"id", "name", "pixelWidth", "pixelHeight", "refreshRate", "hiDPI", "rotation", "dynamicRange"},
        {"catalogEntryID", "targetPPIOverride"});
}

TEST(Rejection, DisplayModeInfoChecksEveryKey) {
    expectEveryKeyChecked(DisplayModeInfo{3840, 2160, 1920, 1080, 60.0},
                          {"pixelWidth", "pixelHeight", "pointWidth", "pointHeight", "refreshRate"}, {});
}

TEST(Rejection, DisplayGroupChecksEveryKey) {
    expectEveryKeyChecked(
        testing::sampleConfig().groups[0],
        {"id", "name", "symbol", "displays", "mainDisplayRef", "layout", "includePhysicalDisplays", "modes",
         "protectedDisplays", "activateOnLaunch", "extraDockSettings", "modifiedAt"},
        {"hotkey"});
}

TEST(Rejection, ExtraDockSettingsChecksEveryKey) {
    expectEveryKeyChecked(testing::sampleConfig().groups[0].extraDockSettings,
                          {"mode", "enabledDisplays", "hideOnNativeDockDisplay"}, {});
}

TEST(Rejection, KeyComboChecksEveryKey) {
    expectEveryKeyChecked(KeyCombo{2, 6912}, {"keyCode", "modifiers"}, {});
}

TEST(Rejection, ConfigChecksEveryKey) {
    expectEveryKeyChecked(testing::sampleConfig(), {"schemaVersion", "groups", "settings", "deletedGroups"},
                          {"activeGroupID"});
}

TEST(Rejection, AppSettingsMistypedKeysFailWhileMissingOnesTakeTheirDefault) {
    const AppSettings settings = testing::sampleConfig().settings;
    const std::string json = encoded(settings);
    for (const std::string_view key :
         {"launchAtLogin", "virtualDisplaysEnabled", "autoCaptureLayout", "showMenuBarLabel",
          "confirmBeforeSwitch", "interceptBrightnessKeys", "syncGroupsToICloud", "automaticUpdateChecks",
          "loginWindowService", "lastUpdateCheckAt", "skippedUpdateVersion", "sleepDisplaysHotkey"}) {
        SCOPED_TRACE(key);
        EXPECT_TRUE(decode<AppSettings>(rebuilt(json, key, std::nullopt)).has_value());
        const auto mistyped = decode<AppSettings>(rebuilt(json, key, wrongKind(json, key)));
        ASSERT_FALSE(mistyped.has_value());
        EXPECT_EQ(mistyped.error().kind, Kind::typeMismatch);
        EXPECT_EQ(mistyped.error().codingPath, key);
    }
}

TEST(Rejection, CatalogEntryChecksEveryKey) {
    expectEveryKeyChecked(
        testing::sampleCatalog()[0],
        {"id", "vendor", "family", "name", "pixelWidth", "pixelHeight", "refreshRates", "hiDPI", "verified"},
        {"year", "diagonalInches", "nativePPI", "notes"});
}

TEST(Rejection, EDIDSummaryChecksEveryKey) {
    const auto reply = testing::sampleReplies()[6].second;
    expectEveryKeyChecked(std::get<CLIReply::Edid>(reply.value).edid.summary,
                          {"vendorNumber", "modelNumber", "serialNumber"},
                          {"manufacturerCode", "productName", "weekOfManufacture", "yearOfManufacture",
                           "nativePixelWidth", "nativePixelHeight"});
}

TEST(Rejection, CLIDisplayChecksEveryKey) {
    const auto reply = testing::sampleReplies()[5].second;
    expectEveryKeyChecked(std::get<CLIReply::Displays>(reply.value).displays[0],
                          {"ref", "pixelWidth", "pixelHeight", "pointWidth", "pointHeight", "refreshRate",
                           "isMain", "isVirtual", "isBuiltin"},
                          {"name"});
}

TEST(Rejection, CLIStatusChecksEveryKey) {
    const auto reply = testing::sampleReplies()[1].second;
    expectEveryKeyChecked(std::get<CLIReply::Status>(reply.value).status, {"groupNames", "stateDescription"},
                          {"appVersion", "activeGroupName", "cloudSync", "loginWindowService"});
}

TEST(Rejection, CLIDisplayEDIDChecksEveryKey) {
    const auto reply = testing::sampleReplies()[6].second;
    expectEveryKeyChecked(std::get<CLIReply::Edid>(reply.value).edid,
                          {"ref", "summary", "source", "isVirtual"}, {});
}

TEST(Rejection, OutOfRangeNumbersAreDataCorrupted) {
    const std::string json = encoded(testing::sampleConfig().groups[0].displays[0]);
    expectDecodingError<VirtualDisplaySpec>(rebuilt(json, "pixelWidth", "5120.5"), Kind::dataCorrupted,
                                            "pixelWidth", "Parsed JSON number <5120.5> does not fit in Int.");
    expectDecodingError<VirtualDisplaySpec>(rebuilt(json, "rotation", "1e300"), Kind::dataCorrupted,
                                            "rotation", "Parsed JSON number <1e+300> does not fit in Int.");
    const std::string combo = encoded(KeyCombo{2, 6912});
    expectDecodingError<KeyCombo>(rebuilt(combo, "modifiers", "4294967296"), Kind::dataCorrupted, "modifiers",
                                  "Parsed JSON number <4294967296> does not fit in UInt32.");
}

TEST(Rejection, UnknownRawValuesAreDataCorrupted) {
    const std::string json = encoded(testing::sampleConfig().groups[0].displays[0]);
    expectDecodingError<VirtualDisplaySpec>(
        rebuilt(json, "dynamicRange", "\"Standard\""), Kind::dataCorrupted, "dynamicRange",
        "Cannot initialize DynamicRange from invalid String value Standard");
}

TEST(Rejection, MalformedReferencesFailWithTheirPath) {
    const std::string json = encoded(testing::sampleConfig().groups[0]);
    expectDecodingError<DisplayGroup>(rebuilt(json, "mainDisplayRef", R"({"virtual":{"_0":"nope"}})"),
                                      Kind::dataCorrupted, "mainDisplayRef.virtual._0",
                                      "Attempted to decode UUID from invalid UUID string.");
    expectDecodingError<DisplayGroup>(rebuilt(json, "mainDisplayRef", R"({"screen":{}})"), Kind::typeMismatch,
                                      "mainDisplayRef", "Invalid number of keys found, expected one.");
    expectDecodingError<DisplayGroup>(rebuilt(json, "modes", R"([{"physical":{"colorSyncUUID":7}},{}])"),
                                      Kind::typeMismatch, "modes[0].physical.colorSyncUUID",
                                      "Expected to decode String but found number instead.");
}

}  // namespace
}  // namespace screenweaver
