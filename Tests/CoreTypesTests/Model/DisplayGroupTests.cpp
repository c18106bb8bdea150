#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/DisplayGroupJSON.hpp"
#include "ModelSamples.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

DisplayGroup group() {
    return testing::sampleConfig().groups[1];
}

std::string replaced(std::string json, std::string_view from, std::string_view to) {
    const auto at = json.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return json.replace(at, from.size(), to);
}

TEST(DisplayGroup, GroupWithoutHotkeyEncodesWithoutTheKeyAndDecodesBackEqual) {
    const DisplayGroup value = group();
    ASSERT_FALSE(value.hotkey.has_value());
    const std::string json = encoded(value);
    EXPECT_EQ(json.find("\"hotkey\""), std::string::npos);
    EXPECT_EQ(decoded<DisplayGroup>(json), value);
}

TEST(DisplayGroup, NullHotkeyReadsAsAbsent) {
    const std::string json =
        replaced(encoded(group()), R"("activateOnLaunch")", R"("hotkey":null,"activateOnLaunch")");
    EXPECT_EQ(decoded<DisplayGroup>(json), group());
}

TEST(DisplayGroup, ExtraDockSettingsWithoutHideOnNativeDockDisplayDoesNotDecode) {
    const std::string json = replaced(encoded(group()), R"(,"hideOnNativeDockDisplay":true)", "");
    expectDecodingError<DisplayGroup>(json, Kind::keyNotFound, "extraDockSettings.hideOnNativeDockDisplay",
                                      "No value associated with key \"hideOnNativeDockDisplay\".");
}

TEST(DisplayGroup, ExtraDockModeOffDecodes) {
    const std::string json = replaced(encoded(group()), R"("mode":"allDisplays")", R"("mode":"off")");
    EXPECT_EQ(decoded<DisplayGroup>(json).extraDockSettings.mode, ExtraDockMode::off);
}

TEST(DisplayGroup, ExtraDockModeDifferingOnlyInLetterCaseDoesNotDecode) {
    const std::string json = replaced(encoded(group()), R"("mode":"allDisplays")", R"("mode":"AllDisplays")");
    expectDecodingError<DisplayGroup>(
        json, Kind::dataCorrupted, "extraDockSettings.mode",
        "Cannot initialize ExtraDockMode from invalid String value AllDisplays");
}

TEST(DisplayGroup, StampRoundsDownToAWholeSecond) {
    const Date epoch{};
    EXPECT_EQ(DisplayGroup::stamp(epoch + std::chrono::microseconds{12900000}),
              epoch + std::chrono::seconds{12});
}

TEST(DisplayGroup, StampRoundsTowardMinusInfinityBeforeTheEpoch) {
    const Date epoch{};
    EXPECT_EQ(DisplayGroup::stamp(epoch - std::chrono::microseconds{1500000}),
              epoch - std::chrono::seconds{2});
}

TEST(DisplayGroup, MemberwiseConstructionStoresModifiedAtUnstamped) {
    DisplayGroup value = group();
    value.modifiedAt = Date{std::chrono::microseconds{1500}};
    EXPECT_EQ(value.modifiedAt.time_since_epoch().count(), 1500);
}

TEST(DisplayGroup, LayoutHoldingOneReferenceAndNoPointFailsTheDecode) {
    const std::string json = replaced(encoded(group()), R"(,[1512,0]])", "]");
    const std::string single = replaced(
        json, R"([{"physical":{"colorSyncUUID":"37D8832A-2D66-02CA-B9F7-8F30A301B230"}},[0,0],)", "[");
    expectDecodingError<DisplayGroup>(
        single, Kind::dataCorrupted, "layout",
        "Expected collection of key-value pairs; encountered odd-length array instead.");
}

TEST(DisplayGroup, GroupsDifferingOnlyInModifiedAtAreUnequal) {
    DisplayGroup later = group();
    later.modifiedAt += std::chrono::seconds{1};
    EXPECT_NE(later, group());
}

TEST(DisplayGroup, EqualGroupsHashAlikeWhateverTheOrderOfInsertion) {
    const DisplayGroup value = testing::sampleConfig().groups[0];
    ASSERT_GE(value.layout.size(), 2U);
    DisplayGroup rebuilt = value;
    rebuilt.layout.clear();
    for (auto entry = value.layout.rbegin(); entry != value.layout.rend(); ++entry) {
        rebuilt.layout.insert(*entry);
    }
    EXPECT_EQ(rebuilt, value);
    EXPECT_EQ(std::hash<DisplayGroup>{}(rebuilt), std::hash<DisplayGroup>{}(value));
}

TEST(DisplayGroup, MalformedReferenceInProtectedDisplaysFailsTheDecode) {
    const std::string json =
        replaced(encoded(testing::sampleConfig().groups[2]), R"("protectedDisplays":[{"physical":)",
                 R"("protectedDisplays":[{"Physical":)");
    expectDecodingError<DisplayGroup>(json, Kind::typeMismatch, "protectedDisplays[0]",
                                      "Invalid number of keys found, expected one.");
}

TEST(ExtraDockSettings, DefaultIsOffWithNoDisplaysHidingOnTheSystemDocksDisplay) {
    const ExtraDockSettings& settings = ExtraDockSettings::defaults();
    EXPECT_EQ(settings.mode, ExtraDockMode::off);
    EXPECT_TRUE(settings.enabledDisplays.empty());
    EXPECT_TRUE(settings.hideOnNativeDockDisplay);
    EXPECT_EQ(&settings, &ExtraDockSettings::defaults());
}

TEST(ExtraDockMode, RawValuesAreTheCaseNames) {
    EXPECT_EQ(rawValue(ExtraDockMode::off), "off");
    EXPECT_EQ(rawValue(ExtraDockMode::allDisplays), "allDisplays");
    EXPECT_EQ(rawValue(ExtraDockMode::perDisplay), "perDisplay");
    EXPECT_FALSE(extraDockModeFromRawValue("Off").has_value());
}

}  // namespace
}  // namespace screenweaver
