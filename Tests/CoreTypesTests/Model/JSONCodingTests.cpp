#include <array>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Coding/ISO8601.hpp"
#include "CoreTypes/Coding/JSONCoding.hpp"
#include "CoreTypes/Model/GeometryJSON.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

TEST(JSONWriter, WritesDoublesWithoutTrailingPointZero) {
    EXPECT_EQ(encoded(60.0), "60");
    EXPECT_EQ(encoded(59.94), "59.94");
    EXPECT_EQ(encoded(-0.0), "-0");
    EXPECT_EQ(encoded(0.0), "0");
    EXPECT_EQ(encoded(1e16), "1e+16");
    EXPECT_EQ(encoded(1.25e16), "1.25e+16");
    EXPECT_EQ(encoded(9007199254740992.0), "9007199254740992");
    EXPECT_EQ(encoded(0.0001), "0.0001");
    EXPECT_EQ(encoded(1e-05), "1e-05");
    EXPECT_EQ(encoded(2147483647.4), "2147483647.4");
    EXPECT_EQ(encoded(5e-324), "5e-324");
    EXPECT_EQ(encoded(-1.7976931348623157e+308), "-1.7976931348623157e+308");
}

TEST(JSONWriter, DoublesReadBackBitForBit) {
    for (const double value : {60.0, 59.94, 1e16, 0.1, 1.0 / 3.0, 5e-324, 1.7976931348623157e+308,
                               9007199254740993.0, -123.456e-7}) {
        const auto back = decoded<double>(encoded(value));
        EXPECT_EQ(std::signbit(back), std::signbit(value)) << value;
        EXPECT_EQ(back, value) << value;
    }
}

TEST(JSONWriter, NegativeZeroIsWrittenAsMinusZeroAndReadsBackBitForBit) {
    EXPECT_EQ(encoded(-0.0), "-0");
    EXPECT_TRUE(std::signbit(decoded<double>("-0")));
    EXPECT_TRUE(std::signbit(decoded<double>("-0.0")));
    EXPECT_TRUE(std::signbit(decoded<double>("-0e3")));
    EXPECT_FALSE(std::signbit(decoded<double>("0")));
    EXPECT_TRUE(std::signbit(decoded<Point>(encoded(Point{1.0, -0.0})).y));
}

TEST(JSONWriter, RefusesNaNAndInfinities) {
    for (const double value :
         {std::nan(""), std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
        const auto text = encode(value);
        ASSERT_FALSE(text.has_value());
    }
    EXPECT_EQ(encode(std::numeric_limits<double>::infinity()).error().debugDescription,
              "Unable to encode Double.inf directly in JSON.");
}

TEST(JSONWriter, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(encoded(std::string{"a\"b\\c/d\b\f\n\r\t\x1b\x01"}), R"("a\"b\\c/d\b\f\n\r\t\u001b\u0001")");
}

TEST(JSONWriter, WritesNonASCIITextAsItIs) {
    EXPECT_EQ(encoded(std::string{"Écran \xE2\x80\x94 ü"}), "\"Écran \xE2\x80\x94 ü\"");
}

TEST(JSONReader, MalformedTextIsDataCorrupted) {
    for (const std::string_view json : {"", "{", "[1,]", "nul", "{\"a\":1}x", "\"\xFF\"", "01"}) {
        expectDecodingError<std::string>(json, Kind::dataCorrupted, "", "The given data was not valid JSON.");
    }
}

TEST(JSONReader, IntegerFieldTakesIntegralNumbersInAnySpelling) {
    EXPECT_EQ(decoded<std::int64_t>("60"), 60);
    EXPECT_EQ(decoded<std::int64_t>("60.0"), 60);
    EXPECT_EQ(decoded<std::int64_t>("1e2"), 100);
    EXPECT_EQ(decoded<std::int64_t>("-0"), 0);
    EXPECT_EQ(decoded<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(JSONReader, IntegerFieldRejectsFractionsAsDataCorrupted) {
    expectDecodingError<std::int64_t>("60.5", Kind::dataCorrupted, "",
                                      "Parsed JSON number <60.5> does not fit in Int.");
}

TEST(JSONReader, IntegerFieldRejectsNumbersBeyondItsRange) {
    expectDecodingError<std::int64_t>("9223372036854775808", Kind::dataCorrupted, "",
                                      "Parsed JSON number <9223372036854775808> does not fit in Int.");
    expectDecodingError<std::int64_t>("1e19", Kind::dataCorrupted, "",
                                      "Parsed JSON number <1e+19> does not fit in Int.");
}

TEST(JSONReader, UnsignedFieldRejectsNegativeAndTooLargeNumbers) {
    EXPECT_EQ(decoded<std::uint32_t>("4294967295"), 4294967295U);
    EXPECT_EQ(decoded<std::uint32_t>("-0"), 0U);
    expectDecodingError<std::uint32_t>("-1", Kind::dataCorrupted, "",
                                       "Parsed JSON number <-1> does not fit in UInt32.");
    expectDecodingError<std::uint32_t>("4294967296", Kind::dataCorrupted, "",
                                       "Parsed JSON number <4294967296> does not fit in UInt32.");
}

TEST(JSONReader, StringWhereNumberExpectedIsTypeMismatch) {
    expectDecodingError<std::int64_t>("\"60\"", Kind::typeMismatch, "",
                                      "Expected to decode Int but found a string instead.");
    expectDecodingError<double>("true", Kind::typeMismatch, "",
                                "Expected to decode Double but found bool instead.");
}

TEST(JSONReader, DoubleFieldTakesAnyNumber) {
    EXPECT_EQ(decoded<double>("60"), 60.0);
    EXPECT_EQ(decoded<double>("18446744073709551615"), 18446744073709551615.0);
    EXPECT_EQ(decoded<double>("-2.5e-3"), -0.0025);
}

TEST(JSONReader, BooleanFieldTakesOnlyTrueAndFalse) {
    EXPECT_TRUE(decoded<bool>("true"));
    EXPECT_FALSE(decoded<bool>("false"));
    expectDecodingError<bool>("1", Kind::typeMismatch, "",
                              "Expected to decode Bool but found number instead.");
    expectDecodingError<bool>("\"true\"", Kind::typeMismatch, "",
                              "Expected to decode Bool but found a string instead.");
}

TEST(JSONReader, NullWhereAValueIsRequiredIsValueNotFound) {
    expectDecodingError<std::string>("null", Kind::valueNotFound, "",
                                     "Expected String value but found null instead.");
    expectDecodingError<bool>("null", Kind::valueNotFound, "", "Expected Bool value but found null instead.");
}

TEST(JSONReader, UUIDMustBeCanonicalText) {
    EXPECT_EQ(decoded<UUID>("\"e621e1f8-c36c-495a-93fc-0c247a3e6e5f\""),
              *UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
    // Escapes stand for the characters they spell, in a UUID too.
    EXPECT_EQ(decoded<UUID>(R"("\u0045621E1F8-C36C-495A-93FC-0C247A3E6E5\u0046")"),
              *UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
    for (const std::string_view json :
         {R"("{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}")", R"(" E621E1F8-C36C-495A-93FC-0C247A3E6E5F")",
          R"("E621E1F8C36C495A93FC0C247A3E6E5F")", R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5")", R"("")",
          R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5F0")", R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5F\n")",
          R"("E621E1F8-C36C-495A-93FC-0C247A3E6E5\"")"}) {
        expectDecodingError<UUID>(json, Kind::dataCorrupted, "",
                                  "Attempted to decode UUID from invalid UUID string.");
    }
}

TEST(ISO8601, WritesWholeSecondsWithoutFraction) {
    const Date date = std::chrono::sys_days{std::chrono::year{2026} / 11 / 21} + std::chrono::hours{9} +
                      std::chrono::minutes{30};
    EXPECT_EQ(ISO8601::format(date), "2026-11-21T09:30:00Z");
}

TEST(ISO8601, WritesFractionTrimmedOfTrailingZeros) {
    const Date date =
        std::chrono::sys_days{std::chrono::year{2026} / 11 / 21} + std::chrono::microseconds{250000};
    EXPECT_EQ(ISO8601::format(date), "2026-11-21T00:00:00.25Z");
    EXPECT_EQ(ISO8601::format(date + std::chrono::microseconds{1}), "2026-11-21T00:00:00.250001Z");
}

TEST(ISO8601, WritesDatesBefore1970) {
    const Date date = Date{} - std::chrono::microseconds{1500000};
    EXPECT_EQ(ISO8601::format(date), "1969-12-31T23:59:58.5Z");
    EXPECT_EQ(ISO8601::parse("1969-12-31T23:59:58.5Z"), date);
}

TEST(ISO8601, RefusesYearsBeyondFourDigits) {
    EXPECT_FALSE(ISO8601::format(std::chrono::sys_days{std::chrono::year{10000} / 1 / 1}).has_value());
    EXPECT_FALSE(ISO8601::format(std::chrono::sys_days{std::chrono::year{-1} / 12 / 31}).has_value());
}

TEST(ISO8601, ParsesWhatItWrites) {
    const Date date =
        std::chrono::sys_days{std::chrono::year{2026} / 2 / 28} + std::chrono::microseconds{86399999999};
    EXPECT_EQ(ISO8601::parse(*ISO8601::format(date)), date);
}

TEST(ISO8601, RejectsEverythingButTheExactForm) {
    for (const std::string_view text :
         {"2026-11-21T09:30:00", "2026-11-21 09:30:00Z", "2026-11-21T09:30:00+00:00", "2026-11-21T09:30:00.Z",
          "2026-11-21T09:30:00.1234567Z", "2026-02-30T00:00:00Z", "2026-13-01T00:00:00Z",
          "2026-11-21T24:00:00Z", "2026-11-21T09:60:00Z", "2026-11-21T09:30:60Z", "26-11-21T09:30:00Z",
          "2026-11-21t09:30:00z", "+2026-11-21T09:30:00Z", "2026-11-21T09:30:00.-1Z"}) {
        EXPECT_FALSE(ISO8601::parse(text).has_value()) << text;
    }
}

TEST(ISO8601, ReadsEveryDayOfTheFourDigitYearsAsTheCalendarHasIt) {
    using namespace std::chrono;
    const sys_days first{year{0} / January / 1};
    const sys_days last{year{9999} / December / 31};
    std::array<char, ISO8601::longestText> text{};
    for (sys_days day = first; day <= last; day += days{1}) {
        // Written by the calendar types of the standard library, read by the parser's own arithmetic.
        const Date date = Date{day} + hours{23} + minutes{59} + seconds{58};
        const std::string_view written{text.data(), ISO8601::write(date, text.data())};
        const auto parsed = ISO8601::parse(written);
        ASSERT_TRUE(parsed.has_value()) << written;
        ASSERT_EQ(*parsed, date) << written;
    }
}

TEST(ISO8601, RejectsDaysTheCalendarDoesNotHave) {
    for (const std::string_view text :
         {"2025-02-29T00:00:00Z", "1900-02-29T00:00:00Z", "2100-02-29T00:00:00Z", "0000-02-30T00:00:00Z",
          "2026-04-31T00:00:00Z", "2026-06-31T00:00:00Z", "2026-09-31T00:00:00Z", "2026-11-31T00:00:00Z",
          "2026-01-32T00:00:00Z", "2026-01-00T00:00:00Z", "2026-00-01T00:00:00Z"}) {
        EXPECT_FALSE(ISO8601::parse(text).has_value()) << text;
    }
    for (const std::string_view text :
         {"2024-02-29T00:00:00Z", "2000-02-29T00:00:00Z", "0000-02-29T00:00:00Z"}) {
        EXPECT_TRUE(ISO8601::parse(text).has_value()) << text;
    }
}

TEST(JSONReader, InvalidDateIsDataCorrupted) {
    expectDecodingError<Date>(R"("2026-11-21")", Kind::dataCorrupted, "",
                              "Expected date string to be ISO8601-formatted.");
}

TEST(DecodingError, PathsJoinKeysWithDotsAndIndexesWithBrackets) {
    DecodingError error = DecodingError::keyNotFound("rotation");
    error.prependIndex(0).prependKey("displays").prependIndex(2).prependKey("groups");
    EXPECT_EQ(error.codingPath, "groups[2].displays[0].rotation");
    DecodingError top = DecodingError::dataCorrupted("x");
    top.prependIndex(3).prependIndex(1);
    EXPECT_EQ(top.codingPath, "[1][3]");
}

TEST(DecodingError, DescriptionNamesKindPathAndText) {
    DecodingError error = DecodingError::keyNotFound("rotation");
    error.prependKey("spec");
    EXPECT_EQ(
        error.description(),
        R"(keyNotFound(codingPath: "spec.rotation", debugDescription: "No value associated with key \"rotation\"."))");
}

}  // namespace
}  // namespace screenweaver
