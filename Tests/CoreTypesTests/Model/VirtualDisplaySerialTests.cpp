#include <gtest/gtest.h>

#include "CoreTypes/Model/VirtualDisplaySerial.hpp"

namespace screenweaver {
namespace {

TEST(VirtualDisplaySerial, AllZeroUUIDGivesTheFNVOfSixteenZeroBytes) {
    EXPECT_EQ(VirtualDisplaySerial::serialNumber(UUID{}), 0x69691905U);
}

TEST(VirtualDisplaySerial, KnownUUIDGivesItsSerial) {
    const auto id = UUID::parse("12345678-9ABC-DEF0-1234-56789ABCDEF0");
    ASSERT_TRUE(id.has_value());
    EXPECT_EQ(VirtualDisplaySerial::serialNumber(*id), 1316049893U);
}

TEST(VirtualDisplaySerial, DependsOnlyOnTheSixteenBytes) {
    const auto upper = UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    const auto lower = UUID::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    ASSERT_TRUE(upper && lower);
    EXPECT_EQ(VirtualDisplaySerial::serialNumber(*upper), VirtualDisplaySerial::serialNumber(*lower));
    EXPECT_EQ(VirtualDisplaySerial::serialNumber(*upper),
              VirtualDisplaySerial::serialNumber(UUID{upper->bytes()}));
}

}  // namespace
}  // namespace screenweaver
