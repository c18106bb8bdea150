#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/Model/DisplayRefKey.hpp"

namespace screenweaver {
namespace {

const UUID sampleID = *UUID::parse("12345678-9abc-def0-1234-56789abcdef0");

TEST(DisplayRefKey, WritesVirtualKeyWithUpperCaseUUID) {
    EXPECT_EQ(DisplayRefKey::string(DisplayRef::virtualDisplay(sampleID)),
              "virtual:12345678-9ABC-DEF0-1234-56789ABCDEF0");
}

TEST(DisplayRefKey, WritesPhysicalKeyUnchanged) {
    EXPECT_EQ(DisplayRefKey::string(DisplayRef::physical("ab:Cd-1")), "physical:ab:Cd-1");
}

TEST(DisplayRefKey, VirtualKeyRoundTrips) {
    const DisplayRef ref = DisplayRef::virtualDisplay(sampleID);
    EXPECT_EQ(DisplayRefKey::ref(DisplayRefKey::string(ref)), ref);
}

TEST(DisplayRefKey, ParsesPhysicalKeyWhoseRestHoldsColons) {
    const DisplayRef ref = DisplayRef::physical("37D8832A:2D66:02CA:B9F7:8F30A301B230");
    EXPECT_EQ(DisplayRefKey::ref(DisplayRefKey::string(ref)), ref);
}

TEST(DisplayRefKey, ParsesLowerCaseVirtualUUID) {
    EXPECT_EQ(DisplayRefKey::ref("virtual:12345678-9abc-def0-1234-56789abcdef0"),
              DisplayRef::virtualDisplay(sampleID));
}

TEST(DisplayRefKey, VirtualKeyWhoseRestIsNotAUUIDIsAbsent) {
    EXPECT_FALSE(DisplayRefKey::ref("virtual:not-a-uuid").has_value());
    EXPECT_FALSE(DisplayRefKey::ref("virtual:").has_value());
    EXPECT_FALSE(DisplayRefKey::ref("virtual:{12345678-9ABC-DEF0-1234-56789ABCDEF0}").has_value());
}

TEST(DisplayRefKey, KeyWithAnyOtherPrefixIsAbsent) {
    EXPECT_FALSE(DisplayRefKey::ref("Virtual:12345678-9ABC-DEF0-1234-56789ABCDEF0").has_value());
    EXPECT_FALSE(DisplayRefKey::ref("Physical:1552-4-0").has_value());
    EXPECT_FALSE(DisplayRefKey::ref(":1552-4-0").has_value());
    EXPECT_FALSE(DisplayRefKey::ref("screen:1").has_value());
}

TEST(DisplayRefKey, StringWithoutColonIsAbsent) {
    EXPECT_FALSE(DisplayRefKey::ref("physical").has_value());
    EXPECT_FALSE(DisplayRefKey::ref("").has_value());
}

TEST(DisplayRefKey, BarePhysicalKeyIsPhysicalWithEmptyString) {
    EXPECT_EQ(DisplayRefKey::ref("physical:"), DisplayRef::physical(""));
}

TEST(DisplayRefKey, OrderMatchesTheOrderOfTheKeyTexts) {
    const std::vector<DisplayRef> refs{
        DisplayRef::physical(""),
        DisplayRef::physical("1552-4-0"),
        DisplayRef::physical("a"),
        DisplayRef::virtualDisplay(UUID{}),
        DisplayRef::virtualDisplay(sampleID),
        DisplayRef::virtualDisplay(*UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F")),
    };
    for (const auto& left : refs) {
        for (const auto& right : refs) {
            EXPECT_EQ(DisplayRefKey::less(left, right),
                      DisplayRefKey::string(left) < DisplayRefKey::string(right))
                << DisplayRefKey::string(left) << " vs " << DisplayRefKey::string(right);
        }
    }
}

TEST(DisplayRef, PhysicalReferencesDifferingOnlyInLetterCaseAreDifferent) {
    EXPECT_NE(DisplayRef::physical("abc-def"), DisplayRef::physical("ABC-DEF"));
}

}  // namespace
}  // namespace screenweaver
