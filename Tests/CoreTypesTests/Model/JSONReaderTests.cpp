// The reader goes through a document once, front to back. These tests pin what that must not
// change: members read in any order, the first failure in field order, first occurrences of
// repeated keys, and the parser's verdict on what is JSON, in skipped values too.

#include <simdjson.h>

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

constexpr std::string_view spec =
    R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","pixelWidth":5120,"pixelHeight":1440,)"
    R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})";

// `spec` with `member` ("key":value) in front of its other members.
std::string specWith(std::string_view member) {
    return "{" + std::string{member} + "," + std::string{spec.substr(1)};
}

bool simdjsonParses(std::string_view text) {
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    return parser.parse(text.data(), text.size()).get(root) == simdjson::SUCCESS;
}

bool decodeCallsMalformed(std::string_view text) {
    const auto value = decode<VirtualDisplaySpec>(text);
    return !value && value.error().debugDescription == "The given data was not valid JSON.";
}

TEST(JSONReader, ReadsMembersInAnyOrder) {
    const std::string reversed =
        R"({"dynamicRange":"standard","rotation":0,"hiDPI":false,"refreshRate":60,"pixelHeight":1440,)"
        R"("pixelWidth":5120,"name":"Wide","id":"12345678-9ABC-DEF0-1234-56789ABCDEF0"})";
    EXPECT_EQ(decoded<VirtualDisplaySpec>(reversed), decoded<VirtualDisplaySpec>(spec));
}

TEST(JSONReader, ReportsTheFirstFailingFieldInFieldOrderWhateverTheTextOrder) {
    // "name" stands first in the text, but "id" comes first in the record.
    expectDecodingError<VirtualDisplaySpec>(
        R"({"name":5,"id":"not a UUID","pixelWidth":1,"pixelHeight":1,"refreshRate":1,"hiDPI":false,)"
        R"("rotation":0,"dynamicRange":"standard"})",
        Kind::dataCorrupted, "id", "Attempted to decode UUID from invalid UUID string.");
    // A missing key before a mistyped one in field order is what is reported.
    expectDecodingError<VirtualDisplaySpec>(
        R"({"pixelWidth":"wide","id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","pixelHeight":1,"refreshRate":1,)"
        R"("hiDPI":false,"rotation":0,"dynamicRange":"standard"})",
        Kind::keyNotFound, "name", "No value associated with key \"name\".");
}

TEST(JSONReader, RepeatedKeyReadsItsFirstOccurrence) {
    EXPECT_EQ(decoded<VirtualDisplaySpec>(specWith(R"("name":"First")") + "").name, "First");
    const std::string repeatedLater = std::string{spec.substr(0, spec.size() - 1)} + R"(,"name":7})";
    EXPECT_EQ(decoded<VirtualDisplaySpec>(repeatedLater).name, "Wide");
}

TEST(JSONReader, KeyWithEscapesIsTheKeyItSpells) {
    EXPECT_EQ(decoded<VirtualDisplaySpec>(specWith(R"("catalog\u0045ntryID":"lg-27uk850")")).catalogEntryID,
              "lg-27uk850");
}

TEST(JSONReader, MalformedTextInAMemberNobodyReadsFailsTheDecode) {
    for (const std::string_view member :
         {R"("unknown":[1,,2])", R"("unknown":{"a" 1})", R"("unknown":tru)", R"("unknown":01)",
          R"("unknown":"\q")", R"("unknown":[1 2])", R"("unknown":{"a":1,})", R"("unknown":nul)",
          R"("unknown":"\ud800")", R"("unknown":-)", R"("unknown":1e400)",
          R"("unknown":18446744073709551616)"}) {
        EXPECT_TRUE(decodeCallsMalformed(specWith(member))) << member;
        EXPECT_FALSE(simdjsonParses(specWith(member))) << member;
    }
}

TEST(JSONReader, MalformedTextAfterAWrongTypeIsStillMalformed) {
    EXPECT_TRUE(decodeCallsMalformed(R"({"id":5,"x":tru})"));
    EXPECT_TRUE(decodeCallsMalformed(R"({"id":[1,,2]})"));
}

TEST(JSONReader, TextAfterTheValueIsMalformed) {
    for (const std::string& text :
         {std::string{spec} + " {}", std::string{spec} + ",", std::string{spec} + "]"}) {
        EXPECT_TRUE(decodeCallsMalformed(text)) << text;
    }
    EXPECT_EQ(decoded<VirtualDisplaySpec>(" \n" + std::string{spec} + " \t\r\n").name, "Wide");
}

TEST(JSONReader, NestingOneDeeperThanTheParserTakesIsMalformed) {
    // The record itself is one level; 1023 arrays inside it make the 1024 the parser allows.
    const auto nested = [](std::size_t depth) {
        return specWith("\"deep\":" + std::string(depth, '[') + std::string(depth, ']'));
    };
    EXPECT_EQ(decoded<VirtualDisplaySpec>(nested(1023)).name, "Wide");
    EXPECT_TRUE(simdjsonParses(nested(1023)));
    EXPECT_TRUE(decodeCallsMalformed(nested(1024)));
    EXPECT_FALSE(simdjsonParses(nested(1024)));
}

TEST(JSONReader, AgreesWithTheParserOnWhatIsJSON) {
    // Texts at the edges of the grammar, each decoded as a number, where only the verdict on the
    // text counts.
    for (const std::string_view text : {"0",
                                        "-0",
                                        "1.5",
                                        "1e2",
                                        "1E+2",
                                        "-1e-2",
                                        "0.1e1",
                                        "01",
                                        "1.",
                                        ".5",
                                        "+1",
                                        "-",
                                        "1e",
                                        "1e+",
                                        "18446744073709551615",
                                        "18446744073709551616",
                                        "-9223372036854775808",
                                        "-9223372036854775809",
                                        "123456789012345678901234567890",
                                        "1.7976931348623157e308",
                                        "1e309",
                                        "4.9e-324",
                                        "1e-400",
                                        "  7  ",
                                        "7 7",
                                        "",
                                        " ",
                                        "[7]",
                                        "\"7\"",
                                        "true",
                                        "truex",
                                        "null",
                                        "nul",
                                        "1\x01",
                                        "\xef\xbb\xbf"
                                        "7",
                                        "\"\x01\"",
                                        "\"\xff\"",
                                        "\"abc",
                                        "{",
                                        "]",
                                        "[1,]",
                                        "{\"a\":1}"}) {
        const auto value = decode<double>(text);
        const bool malformed =
            !value && value.error().debugDescription == "The given data was not valid JSON.";
        EXPECT_EQ(malformed, !simdjsonParses(text)) << text;
    }
}

TEST(JSONReader, ReadsNumbersInEverySpellingAsTheParserDoes) {
    EXPECT_EQ(decoded<double>("1.7976931348623157e308"), 1.7976931348623157e308);
    EXPECT_EQ(decoded<double>("4.9e-324"), 4.9e-324);
    EXPECT_EQ(decoded<double>("0.1e1"), 1.0);
    EXPECT_EQ(decoded<double>("18446744073709551615"), 18446744073709551615.0);
    EXPECT_EQ(decoded<double>("123456.789012345678"), 123456.789012345678);
    EXPECT_EQ(decoded<double>("-0.000123"), -0.000123);
}

}  // namespace
}  // namespace screenweaver
