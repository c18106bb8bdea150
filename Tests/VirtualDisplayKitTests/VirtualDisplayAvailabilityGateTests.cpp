#include <gtest/gtest.h>
#include <string>

#include "VirtualDisplayKit/UnavailableVirtualDisplayManager.hpp"
#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"

namespace screenweaver {
namespace {

const std::string needsFourteen = "Virtual displays need macOS 14 or later.";
const std::string doesNotExpose =
    "This version of macOS does not expose the interface used to create virtual displays.";

TEST(VirtualDisplayAvailabilityGate, BlocksMacOS13ForItsVersionEvenWithTheClassesPresent) {
    EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(true, 13),
              VirtualDisplayGateOutcome::blocked(VirtualDisplayError::unsupportedOSVersion(needsFourteen)));
    EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(false, 13),
              VirtualDisplayGateOutcome::blocked(VirtualDisplayError::unsupportedOSVersion(needsFourteen)));
}

TEST(VirtualDisplayAvailabilityGate, BlocksAnUnresolvedInterfaceWithTheDoesNotExposeSentence) {
    EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(false, 14),
              VirtualDisplayGateOutcome::blocked(VirtualDisplayError::apiUnavailable(doesNotExpose)));
    EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(false, 27),
              VirtualDisplayGateOutcome::blocked(VirtualDisplayError::apiUnavailable(doesNotExpose)));
}

TEST(VirtualDisplayAvailabilityGate, Versions14To26AreUsableWithinTheKnownGoodRange) {
    for (const int version : {14, 15, 26}) {
        EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(true, version),
                  VirtualDisplayGateOutcome::usable(false))
            << version;
    }
}

TEST(VirtualDisplayAvailabilityGate, Versions27AndLaterAreUsableBeyondTheKnownGoodRange) {
    for (const int version : {27, 40}) {
        EXPECT_EQ(VirtualDisplayAvailabilityGate::evaluate(true, version),
                  VirtualDisplayGateOutcome::usable(true))
            << version;
    }
}

TEST(VirtualDisplayAvailabilityGate, AvailabilityCarriesTheBlockingErrorsOwnReason) {
    using Gate = VirtualDisplayGateOutcome;
    EXPECT_EQ(VirtualDisplayAvailabilityGate::availability(Gate::usable(true)),
              VirtualDisplayAvailability::available());
    EXPECT_EQ(
        VirtualDisplayAvailabilityGate::availability(Gate::blocked(VirtualDisplayError::apiUnavailable("x"))),
        VirtualDisplayAvailability::unavailable("x"));
    EXPECT_EQ(VirtualDisplayAvailabilityGate::availability(
                  Gate::blocked(VirtualDisplayError::unsupportedOSVersion("y"))),
              VirtualDisplayAvailability::unavailable("y"));
}

TEST(VirtualDisplayAvailabilityGate, OtherBlockingErrorsGetTheFixedSentence) {
    for (const auto& error :
         {VirtualDisplayError::disabledByKillSwitch(), VirtualDisplayError::invalidSpec("z"),
          VirtualDisplayError::notActiveAfterCreation()}) {
        EXPECT_EQ(VirtualDisplayAvailabilityGate::unavailableReason(error),
                  "Virtual displays are unavailable on this machine.");
    }
}

VirtualDisplaySpec anySpec() {
    return VirtualDisplaySpec{
        .id = UUID::random(), .name = "x", .pixelWidth = 1920, .pixelHeight = 1080, .refreshRate = 60};
}

TEST(UnavailableVirtualDisplayManager, FromAReasonFailsEveryCreationWithApiUnavailable) {
    UnavailableVirtualDisplayManager manager{std::string{"no classes"}};
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::unavailable("no classes"));
    EXPECT_EQ(manager.error(), VirtualDisplayError::apiUnavailable("no classes"));
    const auto created = manager.create(anySpec(), {});
    ASSERT_FALSE(created);
    EXPECT_EQ(created.error(), VirtualDisplayError::apiUnavailable("no classes"));
}

TEST(UnavailableVirtualDisplayManager, FromAnErrorDerivesItsAvailabilityAndThrowsThatError) {
    UnavailableVirtualDisplayManager version{VirtualDisplayError::unsupportedOSVersion(needsFourteen)};
    EXPECT_EQ(version.availability(), VirtualDisplayAvailability::unavailable(needsFourteen));
    EXPECT_EQ(version.create(anySpec(), {}).error(),
              VirtualDisplayError::unsupportedOSVersion(needsFourteen));

    UnavailableVirtualDisplayManager switched{VirtualDisplayError::disabledByKillSwitch()};
    EXPECT_EQ(switched.availability(),
              VirtualDisplayAvailability::unavailable("Virtual displays are unavailable on this machine."));
    EXPECT_EQ(switched.create(anySpec(), {}).error(), VirtualDisplayError::disabledByKillSwitch());
}

TEST(UnavailableVirtualDisplayManager, ReleasesNothingAndFindsNoOrphans) {
    UnavailableVirtualDisplayManager manager{std::string{"r"}};
    manager.release(VirtualDisplayHandle{.spec = anySpec(), .displayID = 3, .acceptedPPI = 150}, {});
    EXPECT_EQ(manager.releaseOrphans({}), 0);
}

}  // namespace
}  // namespace screenweaver
