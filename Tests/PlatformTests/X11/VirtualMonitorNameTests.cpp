#include <gtest/gtest.h>

#include "Platform/X11/VirtualMonitorName.hpp"

namespace screenweaver::platform::x11 {
namespace {

const VirtualMonitorName selfTest{.vendorID = 0x5357,
                                  .productID = 1,
                                  .serialNumber = 0x4E7153E5,
                                  .specID = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
                                  .owner = 0x00A00001};
const std::string selfTestText =
    "SCREENWEAVER:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001";

TEST(VirtualMonitorName, WritesTheNumbersTheSpecAndTheOwner) {
    EXPECT_EQ(selfTest.text(), selfTestText);
}

TEST(VirtualMonitorName, ReadsBackWhatItWrites) {
    EXPECT_EQ(VirtualMonitorName::parse(selfTestText), selfTest);
    const VirtualMonitorName extremes{
        .vendorID = 0xFFFFFFFF, .productID = 0, .serialNumber = 0, .specID = UUID{}, .owner = 0xFFFFFFFF};
    EXPECT_EQ(VirtualMonitorName::parse(extremes.text()), extremes);
}

TEST(VirtualMonitorName, ReadsLowerCaseDigits) {
    EXPECT_EQ(VirtualMonitorName::parse(
                  "SCREENWEAVER:00005357:00000001:4e7153e5:5e1f7e57-0000-4000-8000-000000000001:00a00001"),
              selfTest);
}

TEST(VirtualMonitorName, IsNothingForTheNameOfAnOutputsMonitor) {
    EXPECT_FALSE(VirtualMonitorName::parse("DUMMY0"));
    EXPECT_FALSE(VirtualMonitorName::parse("eDP-1"));
    EXPECT_FALSE(VirtualMonitorName::parse(""));
}

TEST(VirtualMonitorName, IsNothingForANameThatIsAlmostOurs) {
    for (std::string broken : {
             "screenweaver:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001",
             "SCREENWEAVER:0005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A000012",
             "SCREENWEAVER:00005357-00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001",
             "SCREENWEAVER:0000535G:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001",
             "SCREENWEAVER:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-00000000000Z:00A00001",
             "SCREENWEAVER:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A0000",
             "SCREENWEAVER:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:+0A00001",
             "SCREENWEAVER:-0005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001",
         }) {
        EXPECT_FALSE(VirtualMonitorName::parse(broken)) << broken;
    }
}

}  // namespace
}  // namespace screenweaver::platform::x11
