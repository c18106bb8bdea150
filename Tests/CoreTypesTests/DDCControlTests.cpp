#include <functional>
#include <gtest/gtest.h>

#include "CoreTypes/DDCControl.hpp"

namespace screenweaver {
namespace {

TEST(DDCControl, IsBuiltFromItsVCPCode) {
    EXPECT_EQ(ddcControl(0x10), DDCControl::brightness);
    EXPECT_EQ(ddcControl(0x12), DDCControl::contrast);
    EXPECT_EQ(ddcControl(0x62), DDCControl::volume);
    EXPECT_EQ(ddcControl(0x60), DDCControl::inputSource);
    EXPECT_EQ(ddcControl(0xD6), DDCControl::powerMode);
}

TEST(DDCControl, GivesNoValueForAnUnknownCode) {
    EXPECT_EQ(ddcControl(0x61), std::nullopt);
    EXPECT_EQ(ddcControl(0x00), std::nullopt);
    EXPECT_EQ(ddcControl(0xFF), std::nullopt);
}

TEST(DDCControl, ListsAllCasesInDeclarationOrderWithTheirRawValues) {
    ASSERT_EQ(allDDCControls.size(), 5U);
    EXPECT_EQ(rawValue(allDDCControls[0]), 16);
    EXPECT_EQ(rawValue(allDDCControls[1]), 18);
    EXPECT_EQ(rawValue(allDDCControls[2]), 98);
    EXPECT_EQ(rawValue(allDDCControls[3]), 96);
    EXPECT_EQ(rawValue(allDDCControls[4]), 214);
}

TEST(DDCControl, HashesDistinctCasesApart) {
    const std::hash<DDCControl> hash;
    EXPECT_EQ(hash(DDCControl::volume), hash(DDCControl::volume));
    EXPECT_NE(hash(DDCControl::volume), hash(DDCControl::brightness));
}

}  // namespace
}  // namespace screenweaver
