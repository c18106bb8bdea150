#include <cctype>
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

// Every one of the 256 characters at every one of the 32 digit positions: a hexadecimal digit of
// either case reads as its value there, anything else refuses the whole text.
TEST(UUID, ReadsEveryDigitOfEitherCaseAtEveryPositionAndRefusesEveryOtherCharacter) {
    const std::string zero = "00000000-0000-0000-0000-000000000000";
    for (std::size_t position = 0; position < zero.size(); ++position) {
        if (zero[position] == '-') {
            continue;
        }
        const std::size_t digitIndex =
            position - (position > 8) - (position > 13) - (position > 18) - (position > 23);
        for (int code = 0; code < 256; ++code) {
            std::string text = zero;
            text[position] = static_cast<char>(code);
            const auto id = UUID::parse(text);
            const bool digit = std::isxdigit(code) != 0;
            ASSERT_EQ(id.has_value(), digit) << "character " << code << " at " << position;
            if (digit) {
                const int value = code <= '9' ? code - '0' : (code | 0x20) - 'a' + 10;
                UUID::Bytes expected{};
                expected[digitIndex / 2] =
                    static_cast<std::uint8_t>(digitIndex % 2 == 0 ? value << 4 : value);
                EXPECT_EQ(id->bytes(), expected) << "character " << code << " at " << position;
            }
        }
    }
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
