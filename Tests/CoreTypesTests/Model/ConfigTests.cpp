#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/AppSettingsJSON.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "CoreTypes/Model/ConfigLoadOutcome.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"
#include "CoreTypes/Protocols/ConfigStoring.hpp"
#include "ModelSamples.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

constexpr std::string_view defaultSettingsJSON =
    R"({"launchAtLogin":false,"virtualDisplaysEnabled":true,"autoCaptureLayout":false,"showMenuBarLabel":false,)"
    R"("confirmBeforeSwitch":true,"interceptBrightnessKeys":false,"syncGroupsToICloud":true,)"
    R"("automaticUpdateChecks":true,"loginWindowService":"notAsked","sleepDisplaysHotkey":{"keyCode":2,"modifiers":6912}})";

TEST(AppSettings, DefaultsAreTheDocumentedValues) {
    const AppSettings& settings = AppSettings::defaults();
    EXPECT_FALSE(settings.launchAtLogin);
    EXPECT_TRUE(settings.virtualDisplaysEnabled);
    EXPECT_FALSE(settings.autoCaptureLayout);
    EXPECT_FALSE(settings.showMenuBarLabel);
    EXPECT_TRUE(settings.confirmBeforeSwitch);
    EXPECT_FALSE(settings.interceptBrightnessKeys);
    EXPECT_EQ(settings.loginWindowService, LoginWindowServiceConsent::notAsked);
    EXPECT_TRUE(settings.automaticUpdateChecks);
    EXPECT_FALSE(settings.lastUpdateCheckAt.has_value());
    EXPECT_FALSE(settings.skippedUpdateVersion.has_value());
    EXPECT_EQ(settings.sleepDisplaysHotkey, (KeyCombo{2, 6912}));
    EXPECT_TRUE(settings.syncGroupsToICloud);
    EXPECT_EQ(&settings, &AppSettings::defaults());
}

TEST(AppSettings, DefaultsEncodeInTheDocumentsKeyOrder) {
    EXPECT_EQ(encoded(AppSettings::defaults()), defaultSettingsJSON);
}

TEST(AppSettings, EmptyObjectReadsAsTheDefaultsIncludingTheHotkey) {
    const auto settings = decoded<AppSettings>("{}");
    EXPECT_EQ(settings, AppSettings::defaults());
    EXPECT_EQ(settings.sleepDisplaysHotkey, (KeyCombo{2, 6912}));
}

TEST(AppSettings, NullKeysReadAsTheirDefaults) {
    EXPECT_EQ(decoded<AppSettings>(
                  R"({"launchAtLogin":null,"virtualDisplaysEnabled":null,"loginWindowService":null})"),
              AppSettings::defaults());
}

TEST(AppSettings, NullSleepHotkeyReadsAsNoHotkeyAndWritesBackAsNull) {
    const auto settings = decoded<AppSettings>(R"({"sleepDisplaysHotkey":null})");
    EXPECT_FALSE(settings.sleepDisplaysHotkey.has_value());
    const std::string json = encoded(settings);
    EXPECT_TRUE(json.ends_with(R"("sleepDisplaysHotkey":null})")) << json;
    EXPECT_FALSE(decoded<AppSettings>(json).sleepDisplaysHotkey.has_value());
}

TEST(AppSettings, SleepHotkeyObjectIsUsed) {
    EXPECT_EQ(
        decoded<AppSettings>(R"({"sleepDisplaysHotkey":{"keyCode":7,"modifiers":256}})").sleepDisplaysHotkey,
        (KeyCombo{7, 256}));
}

TEST(AppSettings, SettingsWithoutUpdateKeysReadBothAbsentAndWriteNeither) {
    const auto settings = decoded<AppSettings>(R"({"launchAtLogin":true})");
    EXPECT_FALSE(settings.lastUpdateCheckAt.has_value());
    EXPECT_FALSE(settings.skippedUpdateVersion.has_value());
    const std::string json = encoded(settings);
    EXPECT_EQ(json.find("lastUpdateCheckAt"), std::string::npos);
    EXPECT_EQ(json.find("skippedUpdateVersion"), std::string::npos);
}

TEST(AppSettings, WrongTypeIsAnErrorNotTheDefault) {
    expectDecodingError<AppSettings>(R"({"confirmBeforeSwitch":"yes"})", Kind::typeMismatch,
                                     "confirmBeforeSwitch",
                                     "Expected to decode Bool but found a string instead.");
}

TEST(AppSettings, UnknownConsentIsAnErrorNotTheDefault) {
    expectDecodingError<AppSettings>(
        R"({"loginWindowService":"maybe"})", Kind::dataCorrupted, "loginWindowService",
        "Cannot initialize LoginWindowServiceConsent from invalid String value maybe");
}

TEST(AppSettings, MalformedSleepHotkeyFailsWithItsPath) {
    expectDecodingError<AppSettings>(R"({"sleepDisplaysHotkey":{"keyCode":2}})", Kind::keyNotFound,
                                     "sleepDisplaysHotkey.modifiers",
                                     "No value associated with key \"modifiers\".");
}

TEST(Config, EmptyIsSchemaFourWithDefaults) {
    const Config& config = Config::empty();
    EXPECT_EQ(Config::currentSchemaVersion, 4);
    EXPECT_EQ(config.schemaVersion, 4);
    EXPECT_TRUE(config.groups.empty());
    EXPECT_FALSE(config.activeGroupID.has_value());
    EXPECT_EQ(config.settings, AppSettings::defaults());
    EXPECT_TRUE(config.deletedGroups.empty());
    EXPECT_EQ(&config, &Config::empty());
}

TEST(Config, EmptyEncodesWithoutActiveGroupID) {
    EXPECT_EQ(encoded(Config::empty()), R"({"schemaVersion":4,"groups":[],"settings":)" +
                                            std::string{defaultSettingsJSON} + R"(,"deletedGroups":[]})");
}

TEST(Config, AbsentActiveGroupIDProducesNoKey) {
    Config config = testing::sampleConfig();
    config.activeGroupID.reset();
    EXPECT_EQ(encoded(config).find("activeGroupID"), std::string::npos);
    config.activeGroupID = config.groups[1].id;
    EXPECT_NE(encoded(config).find(R"("activeGroupID":"0B5A3C1D-7E2F-4A6B-8C9D-1E2F3A4B5C6D")"),
              std::string::npos);
}

TEST(Config, ConfigurationWithoutDeletedGroupsFailsToRead) {
    expectDecodingError<Config>(R"({"schemaVersion":4,"groups":[],"settings":{}})", Kind::keyNotFound,
                                "deletedGroups", "No value associated with key \"deletedGroups\".");
}

TEST(Config, ConfigurationWithoutSettingsFailsToRead) {
    expectDecodingError<Config>(R"({"schemaVersion":4,"groups":[],"deletedGroups":[]})", Kind::keyNotFound,
                                "settings", "No value associated with key \"settings\".");
}

TEST(Config, NullActiveGroupIDReadsAsAbsent) {
    EXPECT_EQ(decoded<Config>(
                  R"({"schemaVersion":4,"groups":[],"activeGroupID":null,"settings":{},"deletedGroups":[]})"),
              Config::empty());
}

TEST(Config, UnknownKeysAreIgnored) {
    EXPECT_EQ(decoded<Config>(
                  R"({"schemaVersion":4,"groups":[],"settings":{"future":1},"deletedGroups":[],"x":{}})"),
              Config::empty());
}

TEST(Config, OlderSchemaVersionIsReadAsWritten) {
    EXPECT_EQ(
        decoded<Config>(R"({"schemaVersion":3,"groups":[],"settings":{},"deletedGroups":[]})").schemaVersion,
        3);
}

TEST(Config, ErrorDeepInsideAGroupCarriesTheWholePath) {
    Config config = testing::sampleConfig();
    std::string json = encoded(config);
    const std::string rotation = R"("rotation":270,)";
    json.erase(json.find(rotation), rotation.size());
    expectDecodingError<Config>(json, Kind::keyNotFound, "groups[1].displays[0].rotation",
                                "No value associated with key \"rotation\".");
}

TEST(Config, DeletedGroupsAreAnAlternatingArrayOfUUIDAndDate) {
    const auto config =
        decoded<Config>(R"({"schemaVersion":4,"groups":[],"settings":{},"deletedGroups":)"
                        R"(["9f3e0b2a-1111-4222-8333-444455556666","2026-10-01T12:00:00Z"]})");
    ASSERT_EQ(config.deletedGroups.size(), 1U);
    EXPECT_EQ(config.deletedGroups.begin()->second, testing::utcDate(2026, 10, 1, 12, 0, 0));
    expectDecodingError<Config>(
        R"({"schemaVersion":4,"groups":[],"settings":{},"deletedGroups":["9F3E0B2A-1111-4222-8333-444455556666","yesterday"]})",
        Kind::dataCorrupted, "deletedGroups[1]", "Expected date string to be ISO8601-formatted.");
}

TEST(Config, DateOutsideFourDigitYearsCannotBeEncoded) {
    Config config = Config::empty();
    config.deletedGroups.emplace(UUID{}, Date{std::chrono::sys_days{std::chrono::year{12000} / 1 / 1}});
    const auto json = encode(config);
    ASSERT_FALSE(json.has_value());
    EXPECT_EQ(json.error().debugDescription,
              "Date outside the years 0000 to 9999 cannot be written in ISO 8601.");
}

TEST(Config, NaNCannotBeEncoded) {
    Config config = testing::sampleConfig();
    config.groups[0].displays[0].refreshRate = std::nan("");
    const auto json = encode(config);
    ASSERT_FALSE(json.has_value());
    EXPECT_EQ(json.error().description(),
              R"(invalidValue(debugDescription: "Unable to encode Double.nan directly in JSON."))");
}

TEST(HotkeyAction, SleepDisplaysHasItsFixedIdentityAndDefaultCombo) {
    EXPECT_EQ(id(HotkeyAction::sleepDisplays).uuidString(), "5EE95000-0000-4000-A000-000000000001");
    EXPECT_EQ(defaultCombo(HotkeyAction::sleepDisplays), (KeyCombo{2, 0x1B00}));
    EXPECT_EQ(defaultCombo(HotkeyAction::sleepDisplays), AppSettings::defaults().sleepDisplaysHotkey);
}

TEST(HotkeyAction, RawValueSpelledAllInLowerCaseYieldsNoValue) {
    EXPECT_EQ(hotkeyActionFromRawValue("sleepDisplays"), HotkeyAction::sleepDisplays);
    EXPECT_FALSE(hotkeyActionFromRawValue("sleepdisplays").has_value());
}

TEST(HotkeyAction, IsWrittenAsItsRawValue) {
    EXPECT_EQ(encoded(HotkeyAction::sleepDisplays), R"("sleepDisplays")");
    EXPECT_EQ(decoded<HotkeyAction>(R"("sleepDisplays")"), HotkeyAction::sleepDisplays);
}

TEST(KeyCombo, IsWrittenAsKeyCodeThenModifiers) {
    EXPECT_EQ(encoded(KeyCombo{2, 6912}), R"({"keyCode":2,"modifiers":6912})");
    expectDecodingError<KeyCombo>(R"({"keyCode":-1,"modifiers":0})", Kind::dataCorrupted, "keyCode",
                                  "Parsed JSON number <-1> does not fit in UInt32.");
}

TEST(LoginWindowServiceConsent, RawValuesAreTheCaseNames) {
    EXPECT_EQ(rawValue(LoginWindowServiceConsent::notAsked), "notAsked");
    EXPECT_EQ(rawValue(LoginWindowServiceConsent::declined), "declined");
    EXPECT_EQ(rawValue(LoginWindowServiceConsent::wanted), "wanted");
}

TEST(ConfigLoadOutcome, EqualityCoversEveryField) {
    const ConfigLoadOutcome first{Config::empty(), std::nullopt, true};
    EXPECT_EQ(first, (ConfigLoadOutcome{Config::empty(), std::nullopt, true}));
    EXPECT_NE(first, (ConfigLoadOutcome{Config::empty(), "restored from backup", true}));
    EXPECT_NE(first, (ConfigLoadOutcome{Config::empty(), std::nullopt, false}));
}

}  // namespace
}  // namespace screenweaver
