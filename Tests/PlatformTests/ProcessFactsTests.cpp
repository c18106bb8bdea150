#include <unistd.h>

#include <gtest/gtest.h>

#include "Platform/PlatformAPI.hpp"
#include "Platform/ProcessFacts.hpp"

namespace screenweaver::platform {
namespace {

TEST(ProcessFacts, ReadsTheMajorVersionFromTheProductVersion) {
    EXPECT_EQ(macOSMajorVersion("14.2.1"), 14);
    EXPECT_EQ(macOSMajorVersion("15.0"), 15);
    EXPECT_EQ(macOSMajorVersion("26"), 26);
}

TEST(ProcessFacts, MapsCompatibilityVersionsToTheRealRelease) {
    EXPECT_EQ(macOSMajorVersion("10.16"), 11);
    EXPECT_EQ(macOSMajorVersion("16.0"), 26);
    EXPECT_EQ(macOSMajorVersion("10.15.7"), 10);
}

TEST(ProcessFacts, HasNoVersionForTextThatIsNotOne) {
    EXPECT_EQ(macOSMajorVersion(""), std::nullopt);
    EXPECT_EQ(macOSMajorVersion("Sonoma"), std::nullopt);
    EXPECT_EQ(macOSMajorVersion("0.1"), std::nullopt);
}

#if !defined(__APPLE__)
TEST(PlatformAPI, OffersNoInterfacesOnASystemWithoutThem) {
    const PlatformAPI platform = PlatformAPI::system();
    EXPECT_EQ(platform.coreGraphics, nullptr);
    EXPECT_EQ(platform.colorSync, nullptr);
    EXPECT_EQ(platform.coreFoundation, nullptr);
    EXPECT_EQ(platform.objcRuntime, nullptr);
    EXPECT_EQ(platform.dispatch, nullptr);
    EXPECT_EQ(platform.process.macOSMajorVersion, std::nullopt);
    EXPECT_EQ(platform.process.realUserID, getuid());
}
#endif

}  // namespace
}  // namespace screenweaver::platform
