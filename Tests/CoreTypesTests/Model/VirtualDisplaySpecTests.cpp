#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/Model/VirtualDisplaySpec.hpp"

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

}  // namespace
}  // namespace screenweaver
