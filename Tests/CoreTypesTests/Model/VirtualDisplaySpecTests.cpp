#include <functional>
#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

namespace screenweaver {
namespace {

VirtualDisplaySpec sampleSpec() {
    return VirtualDisplaySpec{.id = *UUID::parse("12345678-9ABC-DEF0-1234-56789ABCDEF0"),
                              .name = "Studio",
                              .pixelWidth = 5120,
                              .pixelHeight = 1440,
                              .refreshRate = 60.0,
                              .hiDPI = false,
                              .rotation = 0,
                              .dynamicRange = DynamicRange::standard};
}

TEST(DynamicRange, RawValuesAreTheCaseNames) {
    EXPECT_EQ(rawValue(DynamicRange::standard), "standard");
    EXPECT_EQ(rawValue(DynamicRange::high), "high");
    EXPECT_EQ(rawValue(DynamicRange::reference), "reference");
}

TEST(DynamicRange, FromRawValueIsExactAndCaseSensitive) {
    EXPECT_EQ(dynamicRangeFromRawValue("reference"), DynamicRange::reference);
    EXPECT_FALSE(dynamicRangeFromRawValue("Standard").has_value());
    EXPECT_FALSE(dynamicRangeFromRawValue("").has_value());
}

TEST(VirtualDisplaySpec, OptionalFieldsDefaultToAbsent) {
    const VirtualDisplaySpec spec = sampleSpec();
    EXPECT_FALSE(spec.catalogEntryID.has_value());
    EXPECT_FALSE(spec.targetPPIOverride.has_value());
}

TEST(VirtualDisplaySpec, SpecsDifferingOnlyInTargetPPIOverridePresenceAreUnequalAndHashDifferently) {
    VirtualDisplaySpec withOverride = sampleSpec();
    withOverride.targetPPIOverride = 0.0;
    EXPECT_NE(withOverride, sampleSpec());
    EXPECT_NE(std::hash<VirtualDisplaySpec>{}(withOverride), std::hash<VirtualDisplaySpec>{}(sampleSpec()));
}

TEST(VirtualDisplaySpec, EqualSpecsHashAlike) {
    EXPECT_EQ(sampleSpec(), sampleSpec());
    EXPECT_EQ(std::hash<VirtualDisplaySpec>{}(sampleSpec()), std::hash<VirtualDisplaySpec>{}(sampleSpec()));
}

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

TEST(VirtualDisplaySpecJSON, SpecWithoutOptionalsEncodesWithoutThoseKeysAndDecodesEqual) {
    const std::string json = encoded(sampleSpec());
    EXPECT_EQ(
        json,
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","pixelWidth":5120,"pixelHeight":1440,)"
        R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})");
    EXPECT_EQ(decoded<VirtualDisplaySpec>(json), sampleSpec());
}

TEST(VirtualDisplaySpecJSON, WritesOptionalsInDeclarationOrder) {
    VirtualDisplaySpec spec = sampleSpec();
    spec.catalogEntryID = "dell-u4924dw";
    spec.targetPPIOverride = 109.5;
    spec.dynamicRange = DynamicRange::high;
    EXPECT_EQ(
        encoded(spec),
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","catalogEntryID":"dell-u4924dw",)"
        R"("pixelWidth":5120,"pixelHeight":1440,"refreshRate":60,"hiDPI":false,"rotation":0,)"
        R"("dynamicRange":"high","targetPPIOverride":109.5})");
    EXPECT_EQ(decoded<VirtualDisplaySpec>(encoded(spec)), spec);
}

TEST(VirtualDisplaySpecJSON, NullOptionalsReadAsAbsent) {
    EXPECT_EQ(
        decoded<VirtualDisplaySpec>(
            R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","catalogEntryID":null,"pixelWidth":5120,)"
            R"("pixelHeight":1440,"refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard","targetPPIOverride":null})"),
        sampleSpec());
}

TEST(VirtualDisplaySpecJSON, ObjectWithoutRotationDoesNotDecode) {
    expectDecodingError<VirtualDisplaySpec>(
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","pixelWidth":5120,"pixelHeight":1440,)"
        R"("refreshRate":60,"hiDPI":false,"dynamicRange":"standard"})",
        Kind::keyNotFound, "rotation", "No value associated with key \"rotation\".");
}

TEST(VirtualDisplaySpecJSON, UnknownDynamicRangeDoesNotDecode) {
    expectDecodingError<VirtualDisplaySpec>(
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","pixelWidth":5120,"pixelHeight":1440,)"
        R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"Standard"})",
        Kind::dataCorrupted, "dynamicRange",
        "Cannot initialize DynamicRange from invalid String value Standard");
}

TEST(VirtualDisplaySpecJSON, ReferenceDynamicRangeDecodes) {
    VirtualDisplaySpec spec = sampleSpec();
    spec.dynamicRange = DynamicRange::reference;
    EXPECT_EQ(
        decoded<VirtualDisplaySpec>(
            R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","pixelWidth":5120,"pixelHeight":1440,)"
            R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"reference"})"),
        spec);
}

TEST(VirtualDisplaySpecJSON, UnknownKeysAreIgnored) {
    EXPECT_EQ(
        decoded<VirtualDisplaySpec>(
            R"({"future":[1,2],"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Studio","pixelWidth":5120,)"
            R"("pixelHeight":1440,"refreshRate":60.0,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})"),
        sampleSpec());
}

}  // namespace
}  // namespace screenweaver
