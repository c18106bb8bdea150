#include <functional>
#include <gtest/gtest.h>
#include <unordered_set>

#include "CoreTypes/UUID.hpp"

namespace screenweaver {
namespace {

TEST(UUID, ParsesCanonicalTextOfEitherCaseAndWritesItUpperCase) {
    const auto lower = UUID::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    const auto upper = UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    ASSERT_TRUE(lower && upper);
    EXPECT_EQ(*lower, *upper);
    EXPECT_EQ(lower->uuidString(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    EXPECT_EQ(lower->bytes()[0], 0xE6);
    EXPECT_EQ(lower->bytes()[15], 0x5F);
}

TEST(UUID, RefusesEveryOtherForm) {
    EXPECT_EQ(UUID::parse("{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}"), std::nullopt);
    EXPECT_EQ(UUID::parse(" E621E1F8-C36C-495A-93FC-0C247A3E6E5F"), std::nullopt);
    EXPECT_EQ(UUID::parse("E621E1F8C36C495A93FC0C247A3E6E5F"), std::nullopt);
    EXPECT_EQ(UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5"), std::nullopt);
    EXPECT_EQ(UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5FF"), std::nullopt);
    EXPECT_EQ(UUID::parse("G621E1F8-C36C-495A-93FC-0C247A3E6E5F"), std::nullopt);
    EXPECT_EQ(UUID::parse("E621E1F8-C36C-495A-93FC_0C247A3E6E5F"), std::nullopt);
    EXPECT_EQ(UUID::parse(""), std::nullopt);
}

TEST(UUID, GeneratesDistinctVersionFourValues) {
    const UUID first = UUID::random();
    const UUID second = UUID::random();
    EXPECT_NE(first, second);
    EXPECT_EQ(first.bytes()[6] >> 4, 4);
    EXPECT_EQ(first.bytes()[8] & 0xC0, 0x80);
    EXPECT_EQ(UUID::parse(first.uuidString()), first);
}

TEST(UUID, ComparesAndHashesByItsSixteenBytes) {
    const UUID zero;
    EXPECT_EQ(zero.uuidString(), "00000000-0000-0000-0000-000000000000");
    const auto same = UUID::parse("00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(zero, *same);
    EXPECT_EQ(std::hash<UUID>{}(zero), std::hash<UUID>{}(*same));
    const std::unordered_set<UUID> set{zero, *same, UUID::random()};
    EXPECT_EQ(set.size(), 2U);
}

}  // namespace
}  // namespace screenweaver
