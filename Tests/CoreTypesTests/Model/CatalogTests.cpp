#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/CatalogEntryJSON.hpp"
#include "CoreTypes/Protocols/CatalogProviding.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

CatalogEntry entry(std::int64_t width, std::int64_t height) {
    return CatalogEntry{.id = "x",
                        .vendor = "Generic",
                        .family = CatalogFamily::common,
                        .name = "X",
                        .pixelWidth = width,
                        .pixelHeight = height,
                        .refreshRates = {60.0},
                        .hiDPI = false,
                        .verified = false};
}

constexpr std::string_view minimalEntry =
    R"({"id":"x","vendor":"Generic","family":"common","name":"X","pixelWidth":1920,"pixelHeight":1200,)"
    R"("refreshRates":[60],"hiDPI":false,"verified":false})";

TEST(CatalogFamily, RawValuesAreLowerCaseAndPickerTitlesAreFixed) {
    const std::vector<std::tuple<CatalogFamily, std::string_view, std::string_view>> expected{
        {CatalogFamily::external, "external", "External displays"},
        {CatalogFamily::macbook, "macbook", "MacBook"},
        {CatalogFamily::iMac, "imac", "iMac"},
        {CatalogFamily::iPad, "ipad", "iPad"},
        {CatalogFamily::common, "common", "Common formats"},
    };
    for (const auto& [family, raw, title] : expected) {
        EXPECT_EQ(rawValue(family), raw);
        EXPECT_EQ(pickerTitle(family), title);
        EXPECT_EQ(catalogFamilyFromRawValue(raw), family);
    }
}

TEST(CatalogEntry, EntryWithoutOptionalKeysDecodesAndEncodesBackWithoutThem) {
    const auto value = decoded<CatalogEntry>(minimalEntry);
    EXPECT_FALSE(value.year.has_value());
    EXPECT_FALSE(value.diagonalInches.has_value());
    EXPECT_FALSE(value.nativePPI.has_value());
    EXPECT_FALSE(value.notes.has_value());
    EXPECT_EQ(encoded(value), minimalEntry);
}

TEST(CatalogEntry, FamilyIPadInMixedCaseFails) {
    std::string json{minimalEntry};
    json.replace(json.find("common"), 6, "iPad");
    expectDecodingError<CatalogEntry>(json, Kind::dataCorrupted, "family",
                                      "Cannot initialize CatalogFamily from invalid String value iPad");
}

TEST(CatalogEntry, FamilyIpadDecodesToIPad) {
    std::string json{minimalEntry};
    json.replace(json.find("common"), 6, "ipad");
    EXPECT_EQ(decoded<CatalogEntry>(json).family, CatalogFamily::iPad);
}

TEST(CatalogEntry, AspectRatioReducesByGreatestCommonDivisor) {
    EXPECT_EQ(entry(3840, 2160).aspectRatio(), std::make_pair(std::int64_t{16}, std::int64_t{9}));
    EXPECT_EQ(entry(2560, 1600).aspectRatio(), std::make_pair(std::int64_t{8}, std::int64_t{5}));
    EXPECT_EQ(entry(3440, 1440).aspectRatio(), std::make_pair(std::int64_t{43}, std::int64_t{18}));
}

TEST(CatalogEntry, AspectRatioStringOf1920x1200Is8To5) {
    EXPECT_EQ(entry(1920, 1200).aspectRatioString(), "8:5");
}

TEST(CatalogEntry, AspectRatioStringOf1366x768Is683To384) {
    EXPECT_EQ(entry(1366, 768).aspectRatioString(), "683:384");
}

TEST(CatalogEntry, AspectRatioStringOfZeroByZeroIsZeroToZero) {
    EXPECT_EQ(entry(0, 0).aspectRatioString(), "0:0");
}

TEST(CatalogEntry, AspectRatioWithZeroHeightDividesByTheWidth) {
    EXPECT_EQ(entry(1920, 0).aspectRatioString(), "1:0");
    EXPECT_EQ(entry(-1920, 1080).aspectRatioString(), "-16:9");
}

TEST(CatalogEntry, EntriesDifferingOnlyInRefreshRateOrderAreUnequal) {
    CatalogEntry first = entry(1920, 1080);
    first.refreshRates = {60.0, 120.0};
    CatalogEntry second = entry(1920, 1080);
    second.refreshRates = {120.0, 60.0};
    EXPECT_NE(first, second);
}

TEST(CatalogEntry, NullOptionalKeysReadAsAbsent) {
    const auto value = decoded<CatalogEntry>(
        R"({"id":"x","vendor":"Generic","family":"common","name":"X","year":null,"diagonalInches":null,)"
        R"("pixelWidth":1920,"pixelHeight":1200,"nativePPI":null,"refreshRates":[60],"hiDPI":false,"verified":false,"notes":null})");
    EXPECT_EQ(value, decoded<CatalogEntry>(minimalEntry));
}

TEST(CatalogDocument, BadEntryFailsTheWholeDocumentWithItsIndex) {
    const std::string json = "[" + std::string{minimalEntry} + R"(,{"id":"y"}])";
    expectDecodingError<std::vector<CatalogEntry>>(json, Kind::keyNotFound, "[1].vendor",
                                                   "No value associated with key \"vendor\".");
}

TEST(CatalogDocument, RefreshRatesOfTheWrongTypeFailWithTheElementPath) {
    std::string json{minimalEntry};
    json.replace(json.find("[60]"), 4, R"([60,"75"])");
    expectDecodingError<CatalogEntry>(json, Kind::typeMismatch, "refreshRates[1]",
                                      "Expected to decode Double but found a string instead.");
}

}  // namespace
}  // namespace screenweaver
