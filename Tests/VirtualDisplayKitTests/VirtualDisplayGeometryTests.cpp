#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <unordered_set>
#include <vector>

#include "CoreTypes/Model/VirtualDisplaySerial.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"
#include "VirtualDisplayKit/VirtualDisplayRecipe.hpp"

namespace screenweaver {
namespace {

VirtualDisplaySpec spec(std::int64_t width, std::int64_t height, bool hiDPI = false) {
    return VirtualDisplaySpec{
        .id = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
        .name = "Desk",
        .catalogEntryID = std::nullopt,
        .pixelWidth = width,
        .pixelHeight = height,
        .refreshRate = 60.0,
        .hiDPI = hiDPI,
        .rotation = 0,
        .dynamicRange = DynamicRange::standard,
        .targetPPIOverride = std::nullopt,
    };
}

std::string rejection(const VirtualDisplaySpec& candidate) {
    const auto result = VirtualDisplayGeometry::validate(candidate);
    return result ? std::string{"accepted"} : result.error().description();
}

const std::string accepted = "accepted";

std::string invalid(const std::string& reason) {
    return VirtualDisplayError::invalidSpec(reason).description();
}

TEST(VirtualDisplayGeometry, AcceptsAnOrdinarySpec) {
    EXPECT_EQ(rejection(spec(5120, 1440)), accepted);
}

TEST(VirtualDisplayGeometry, RejectsANonPositivePixelSizeBeforeAnyOtherRule) {
    auto candidate = spec(0, 1080);
    candidate.refreshRate = 0;
    candidate.rotation = 45;
    EXPECT_EQ(rejection(candidate), invalid("a display must have a positive pixel size"));
    EXPECT_EQ(rejection(spec(1920, -1)), invalid("a display must have a positive pixel size"));
}

TEST(VirtualDisplayGeometry, Accepts32768PixelsASideAndRejectsOneMore) {
    EXPECT_EQ(rejection(spec(32768, 32768)), accepted);
    EXPECT_EQ(rejection(spec(32769, 1)), invalid("pixel size exceeds 32768 in one dimension"));
    EXPECT_EQ(rejection(spec(1, 32769)), invalid("pixel size exceeds 32768 in one dimension"));
}

TEST(VirtualDisplayGeometry, RejectsAnOddSizeOnlyForHiDPI) {
    EXPECT_EQ(rejection(spec(3841, 2160, true)),
              invalid("a HiDPI display needs an even pixel size to halve"));
    EXPECT_EQ(rejection(spec(3840, 2161, true)),
              invalid("a HiDPI display needs an even pixel size to halve"));
    EXPECT_EQ(rejection(spec(3841, 2160, false)), accepted);
}

TEST(VirtualDisplayGeometry, AcceptsRefreshRatesUpToAndIncluding480) {
    const std::string message = invalid("refresh rate must be between 0 and 480.0 Hz");
    for (const double rate : {480.0, 0.001, 59.94}) {
        auto candidate = spec(1920, 1080);
        candidate.refreshRate = rate;
        EXPECT_EQ(rejection(candidate), accepted) << rate;
    }
    for (const double rate : {480.5, 0.0, -60.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()}) {
        auto candidate = spec(1920, 1080);
        candidate.refreshRate = rate;
        EXPECT_EQ(rejection(candidate), message) << rate;
    }
}

TEST(VirtualDisplayGeometry, AcceptsOnlyQuarterTurnRotations) {
    for (const std::int64_t rotation : {0, 90, 180, 270}) {
        auto candidate = spec(1920, 1080);
        candidate.rotation = rotation;
        EXPECT_EQ(rejection(candidate), accepted) << rotation;
    }
    for (const std::int64_t rotation : {360, -90, 45, 1}) {
        auto candidate = spec(1920, 1080);
        candidate.rotation = rotation;
        EXPECT_EQ(rejection(candidate), invalid("rotation must be 0, 90, 180 or 270 degrees")) << rotation;
    }
}

TEST(VirtualDisplayGeometry, AcceptsTargetDensitiesUpToAndIncluding1000) {
    for (const double ppi : {1000.0, 0.5, 218.0}) {
        auto candidate = spec(1920, 1080);
        candidate.targetPPIOverride = ppi;
        EXPECT_EQ(rejection(candidate), accepted) << ppi;
    }
    for (const double ppi : {0.0, 1000.01, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        auto candidate = spec(1920, 1080);
        candidate.targetPPIOverride = ppi;
        EXPECT_EQ(rejection(candidate), invalid("target PPI must be between 0 and 1000.0")) << ppi;
    }
}

TEST(VirtualDisplayGeometry, ValidationReportsTheFirstBrokenRuleOnly) {
    auto candidate = spec(3841, 2161, true);
    candidate.refreshRate = 0;
    candidate.rotation = 1;
    EXPECT_EQ(rejection(candidate), invalid("a HiDPI display needs an even pixel size to halve"));
    candidate = spec(1920, 1080);
    candidate.rotation = 1;
    candidate.targetPPIOverride = 0;
    EXPECT_EQ(rejection(candidate), invalid("rotation must be 0, 90, 180 or 270 degrees"));
}

std::vector<double> ladder(std::optional<double> target) {
    auto candidate = spec(1920, 1080);
    candidate.targetPPIOverride = target;
    return VirtualDisplayGeometry::ppiLadder(candidate);
}

TEST(VirtualDisplayGeometry, LadderStartsAt150WithoutATarget) {
    EXPECT_EQ(ladder(std::nullopt), (std::vector<double>{150, 120, 100, 80}));
}

TEST(VirtualDisplayGeometry, LadderKeepsOnlyTheFallbacksBelowTheTarget) {
    EXPECT_EQ(ladder(110), (std::vector<double>{110, 100, 80}));
    EXPECT_EQ(ladder(100), (std::vector<double>{100, 80}));
    EXPECT_EQ(ladder(80), (std::vector<double>{80}));
    EXPECT_EQ(ladder(40), (std::vector<double>{40}));
    EXPECT_EQ(ladder(500), (std::vector<double>{500, 120, 100, 80}));
    EXPECT_EQ(ladder(120.5), (std::vector<double>{120.5, 120, 100, 80}));
}

using Modes = std::vector<VirtualDisplayModeSpec>;

TEST(VirtualDisplayGeometry, HiDPIAtExactlyFullHDPointsOffersOneMode) {
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(3840, 2160, true)), (Modes{{1920, 1080, 60.0}}));
}

TEST(VirtualDisplayGeometry, LargeDisplaysAlsoOfferFullHDAt60) {
    auto candidate = spec(5120, 2880, true);
    candidate.refreshRate = 120.0;
    EXPECT_EQ(VirtualDisplayGeometry::modes(candidate), (Modes{{2560, 1440, 120.0}, {1920, 1080, 60.0}}));
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(1920, 1200)),
              (Modes{{1920, 1200, 60.0}, {1920, 1080, 60.0}}));
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(5120, 1440)),
              (Modes{{5120, 1440, 60.0}, {1920, 1080, 60.0}}));
}

TEST(VirtualDisplayGeometry, SmallOrShortDisplaysOfferTheirOwnModeOnly) {
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(1280, 1024)), (Modes{{1280, 1024, 60.0}}));
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(2000, 1000)), (Modes{{2000, 1000, 60.0}}));
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(1920, 1080)), (Modes{{1920, 1080, 60.0}}));
    EXPECT_EQ(VirtualDisplayGeometry::modes(spec(1900, 1200)), (Modes{{1900, 1200, 60.0}}));
}

TEST(VirtualDisplayGeometry, PhysicalSizeDividesByTheDensityBeforeScalingToMillimetres) {
    const Size size = VirtualDisplayGeometry::sizeInMillimeters(spec(5120, 1440), 150.0);
    // Dividing first gives these exact doubles; multiplying first would give 866.9866666666667 and
    // 243.84.
    EXPECT_EQ(size.width, 866.9866666666666);
    EXPECT_EQ(size.height, 243.83999999999997);
    // HiDPI keeps the full pixel size.
    EXPECT_EQ(VirtualDisplayGeometry::sizeInMillimeters(spec(3840, 2160, true), 100.0),
              (Size{3840.0 / 100.0 * 25.4, 2160.0 / 100.0 * 25.4}));
}

TEST(VirtualDisplayGeometry, WholeDensitiesTruncateTowardZero) {
    EXPECT_EQ(VirtualDisplayGeometry::wholePPI(99.9), 99);
    EXPECT_EQ(VirtualDisplayGeometry::wholePPI(150.0), 150);
    EXPECT_EQ(VirtualDisplayGeometry::wholePPI(0.5), 0);
}

TEST(VirtualDisplayRecipe, TakesEveryFieldFromTheSpecAndTheRung) {
    auto candidate = spec(5120, 2880, true);
    candidate.rotation = 90;
    candidate.dynamicRange = DynamicRange::reference;
    candidate.targetPPIOverride = 218.0;
    const VirtualDisplayRecipe recipe = VirtualDisplayRecipe::make(candidate, 120.0);
    const VirtualDisplayRecipe expected{
        .name = "Desk",
        .maxPixelsWide = 5120,
        .maxPixelsHigh = 2880,
        .sizeInMillimeters = {5120.0 / 120.0 * 25.4, 2880.0 / 120.0 * 25.4},
        .serialNumber = VirtualDisplaySerial::serialNumber(candidate.id),
        .vendorID = 0x5357,
        .productID = 1,
        .modes = {{2560, 1440, 60.0}, {1920, 1080, 60.0}},
        .hiDPI = true,
        .rotation = 90,
        .dynamicRange = DynamicRange::reference,
        .ppi = 120.0,
    };
    EXPECT_EQ(recipe, expected);
}

TEST(VirtualDisplayRecipe, EqualRecipesHashAlikeAndAnyFieldTellsThemApart) {
    const VirtualDisplayRecipe recipe = VirtualDisplayRecipe::make(spec(1920, 1080), 150.0);
    VirtualDisplayRecipe copy = recipe;
    EXPECT_EQ(std::hash<VirtualDisplayRecipe>{}(recipe), std::hash<VirtualDisplayRecipe>{}(copy));
    copy.ppi = 120.0;
    EXPECT_NE(recipe, copy);
    copy = recipe;
    copy.dynamicRange = DynamicRange::high;
    EXPECT_NE(recipe, copy);
    const std::unordered_set<VirtualDisplayModeSpec> modes{
        {1920, 1080, 60.0}, {1920, 1080, 60.0}, {1920, 1080, 30.0}};
    EXPECT_EQ(modes.size(), 2U);
}

}  // namespace
}  // namespace screenweaver
