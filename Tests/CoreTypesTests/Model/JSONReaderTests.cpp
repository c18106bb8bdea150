// The reader goes through a document once, front to back. These tests pin what that must not
// change: members read in any order, the first failure in field order, first occurrences of
// repeated keys, and the parser's verdict on what is JSON, in skipped values too.

#include <simdjson.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <vector>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "CoreTypes/Model/DisplayRefJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"

namespace screenweaver {
namespace {

// A record that holds an array of its own type.
struct Tree {
    std::int64_t value = 0;
    std::vector<Tree> children;
    friend bool operator==(const Tree&, const Tree&) = default;
};

constexpr coding::RecordForm treeForm{coding::required("value", &Tree::value),
                                      coding::required("children", &Tree::children)};

// A chain of records, each in an array of the one before, the last holding references.
struct Chain {
    std::vector<Chain> inner;
    std::vector<DisplayRef> references;
    std::vector<std::vector<DisplayRef>> nestedReferences;
};

constexpr coding::RecordForm chainForm{coding::ifPresent("inner", &Chain::inner),
                                       coding::ifPresent("references", &Chain::references),
                                       coding::ifPresent("nestedReferences", &Chain::nestedReferences)};

}  // namespace

template <>
struct JSONForm<Tree> {
    static void write(JSONWriter& writer, const Tree& tree) { treeForm.write(writer, tree); }
    static bool read(JSONReader& reader, JSONValue& value, Tree& tree) {
        return treeForm.read(reader, value, tree);
    }
};

template <>
struct JSONForm<Chain> {
    static void write(JSONWriter& writer, const Chain& chain) { chainForm.write(writer, chain); }
    static bool read(JSONReader& reader, JSONValue& value, Chain& chain) {
        return chainForm.read(reader, value, chain);
    }
};

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

TEST(JSONReader, ReadsTheWritersOrderUntilTheTextLeavesItAndTheRestInAnyOrder) {
    const VirtualDisplaySpec expected = decoded<VirtualDisplaySpec>(spec);
    for (
        const std::string_view text :
        {R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","pixelHeight":1440,"pixelWidth":5120,)"
         R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})",
         R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","extra":[{"pixelWidth":1}],)"
         R"("pixelWidth":5120,"pixelHeight":1440,"refreshRate":60,"hiDPI":false,"rotation":0,)"
         R"("dynamicRange":"standard"})",
         R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name" : "Wide","pixelWidth":5120,)"
         R"("pixelHeight":1440,"refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})",
         R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","pixelWidth":5120,"pixelHeight":1440,)"
         R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard","pixelWidth":7})"}) {
        EXPECT_EQ(decoded<VirtualDisplaySpec>(text), expected) << text;
    }
    const auto withOptionals = decoded<VirtualDisplaySpec>(
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","pixelWidth":5120,"pixelHeight":1440,)"
        R"("refreshRate":60,"hiDPI":false,"rotation":0,"dynamicRange":"standard","targetPPIOverride":110,)"
        R"("catalogEntryID":"lg-27uk850"})");
    EXPECT_EQ(withOptionals.catalogEntryID, "lg-27uk850");
    EXPECT_EQ(withOptionals.targetPPIOverride, 110.0);
}

TEST(JSONReader, ReportsTheFirstFailureInFieldOrderWhereTheTextLeavesTheWritersOrder) {
    // "pixelWidth" fails first in the text, in the writer's order; "catalogEntryID", an optional
    // member that comes before it in the record, fails later in the text and is what is reported.
    expectDecodingError<VirtualDisplaySpec>(
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide","pixelWidth":"wide","pixelHeight":1,)"
        R"("refreshRate":1,"hiDPI":false,"rotation":0,"dynamicRange":"standard","catalogEntryID":5})",
        Kind::typeMismatch, "catalogEntryID", "Expected to decode String but found number instead.");
    // A required key missing from the writer's order is missing wherever the text goes on.
    expectDecodingError<VirtualDisplaySpec>(
        R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","pixelWidth":"wide","pixelHeight":1,)"
        R"("refreshRate":1,"hiDPI":false,"rotation":0,"dynamicRange":"standard"})",
        Kind::keyNotFound, "name", "No value associated with key \"name\".");
    expectDecodingError<VirtualDisplaySpec>(R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0"})",
                                            Kind::keyNotFound, "name",
                                            "No value associated with key \"name\".");
    for (const std::string_view text :
         {R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":})",
          R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0" "name":"Wide"})",
          R"({"id":"12345678-9ABC-DEF0-1234-56789ABCDEF0","name":"Wide",})", R"({"id":)", R"({"id")"}) {
        EXPECT_TRUE(decodeCallsMalformed(text)) << text;
        EXPECT_FALSE(simdjsonParses(text)) << text;
    }
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
    // The record itself is one level; an empty array adds none, so 1022 arrays around one more,
    // empty, make the deepest nesting the parser allows, as do 1022 around one that holds a number.
    const auto nested = [](std::size_t depth, std::string_view innermost) {
        return specWith("\"deep\":" + std::string(depth, '[') + std::string{innermost} +
                        std::string(depth, ']'));
    };
    for (const auto& [text, json] :
         {std::pair{nested(1023, ""), true}, std::pair{nested(1024, ""), false},
          std::pair{nested(1022, "7"), true}, std::pair{nested(1023, "7"), false}}) {
        EXPECT_EQ(decode<VirtualDisplaySpec>(text).has_value(), json) << text.size();
        EXPECT_EQ(decodeCallsMalformed(text), !json) << text.size();
        EXPECT_EQ(simdjsonParses(text), json) << text.size();
    }
}

// Texts at the edges of the grammar, each decoded as a number, where only the verdict on the text
// counts.
constexpr auto grammarEdges = std::to_array<std::string_view>({"0",
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
                                                               "{\"a\":1}"});

bool decodesAsMalformed(std::string_view text) {
    const auto value = decode<double>(text);
    return !value && value.error().debugDescription == "The given data was not valid JSON.";
}

TEST(JSONReader, AgreesWithTheParserOnWhatIsJSON) {
    for (const std::string_view text : grammarEdges) {
        EXPECT_EQ(decodesAsMalformed(text), !simdjsonParses(text)) << text;
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

// `text` copied to the very end of readable memory: the page after it allows no access, so a
// read past the end of the text stops the test program.
class TextAtTheEndOfMemory {
public:
    explicit TextAtTheEndOfMemory(std::string_view text) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        length_ = (text.size() / page + 2) * page;
        memory_ = static_cast<char*>(
            mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        EXPECT_NE(memory_, MAP_FAILED);
        char* const guard = memory_ + length_ - page;
        EXPECT_EQ(mprotect(guard, page, PROT_NONE), 0);
        // Whatever stands before the text is not part of it.
        std::memset(memory_, '7', length_ - page);
        std::memcpy(guard - text.size(), text.data(), text.size());
        text_ = {guard - text.size(), text.size()};
    }
    TextAtTheEndOfMemory(const TextAtTheEndOfMemory&) = delete;
    TextAtTheEndOfMemory& operator=(const TextAtTheEndOfMemory&) = delete;
    ~TextAtTheEndOfMemory() { munmap(memory_, length_); }

    [[nodiscard]] std::string_view text() const { return text_; }

private:
    char* memory_ = nullptr;
    std::size_t length_ = 0;
    std::string_view text_;
};

TEST(JSONReader, ReadsNothingPastTheEndOfTheText) {
    for (const std::string_view text : grammarEdges) {
        const TextAtTheEndOfMemory atTheEnd{text};
        EXPECT_EQ(decodesAsMalformed(atTheEnd.text()), decodesAsMalformed(text)) << text;
    }
    for (const std::string_view text :
         {R"("a\u0041\n")", R"({"physical":{"colorSyncUUID":"a\"b"}})", R"({"virtual":{"_0":"12345678-9ABC)",
          R"({"physical":{"colorSyncUUID":"1552-4-0"}})", R"({"virtual":{"_0":"x"}})"}) {
        const TextAtTheEndOfMemory atTheEnd{text};
        EXPECT_EQ(decode<DisplayRef>(atTheEnd.text()), decode<DisplayRef>(text)) << text;
    }
    const TextAtTheEndOfMemory atTheEnd{spec};
    EXPECT_EQ(decoded<VirtualDisplaySpec>(atTheEnd.text()), decoded<VirtualDisplaySpec>(spec));
}

TEST(JSONReader, ReadsEveryTokenWhereverTheEndOfTheTextFallsAfterIt) {
    // Leading spaces move every token against the end of the text, which ends where its memory
    // does: references in the writer's spelling and in others, strings with escapes, numbers.
    const std::vector<DisplayRef> references{
        DisplayRef::virtualDisplay(*UUID::parse("12345678-9ABC-DEF0-1234-56789ABCDEF0")),
        DisplayRef::physical("37D8832A-2D66-02CA-B9F7-8F30A301B230"), DisplayRef::physical("a\"b"),
        DisplayRef::physical("1552-4-0"),
        DisplayRef::virtualDisplay(*UUID::parse("02000000-0000-4000-8000-000000000003"))};
    const std::string written = testing::encoded(references);
    const std::string spaced =
        R"([{ "virtual" : {"_0":"12345678-9ABC-DEF0-1234-56789ABCDEF0"}},)"
        R"({"physical":{"colorSyncUUID":"37D8832A-2D66-02CA-B9F7-8F30A301B230"} },)"
        R"({"physical":{"colorSyncUUID":"a\"b"}},{"physical":{"colorSyncUUID":"1552-4-0"}},)"
        R"({"virtual":{"_0":"02000000-0000-4000-8000-000000000003"}}])";
    for (std::size_t spaces = 0; spaces <= 2 * written.size(); ++spaces) {
        for (const std::string& text : {written, spaced}) {
            const TextAtTheEndOfMemory atTheEnd{std::string(spaces, ' ') + text};
            EXPECT_EQ(decoded<std::vector<DisplayRef>>(atTheEnd.text()), references) << spaces << text;
        }
        const TextAtTheEndOfMemory numbers{std::string(spaces, ' ') + "[1.5,-0,12345678901234567890,1e2,7]"};
        EXPECT_EQ(decoded<std::vector<double>>(numbers.text()),
                  (std::vector<double>{1.5, -0.0, 12345678901234567890.0, 100.0, 7.0}))
            << spaces;
    }
}

TEST(JSONReader, ReferenceInTheWritersSpellingOneLevelTooDeepIsMalformed) {
    // Each link is two levels, an object and an array; the last record one more, its references
    // one more and its nested references two. A reference is two levels, and 1023 levels that
    // hold something are the most the parser allows.
    const auto chain = [](std::size_t links, std::string_view last) {
        std::string text;
        for (std::size_t link = 0; link < links; ++link) {
            text += R"({"inner":[)";
        }
        text += last;
        for (std::size_t link = 0; link < links; ++link) {
            text += "]}";
        }
        return text;
    };
    const std::string deepest = chain(509, R"({"nestedReferences":[[{"physical":{"colorSyncUUID":"a"}}]]})");
    EXPECT_TRUE(decode<Chain>(deepest).has_value());
    EXPECT_TRUE(simdjsonParses(deepest));
    const std::string tooDeep = chain(510, R"({"references":[{"physical":{"colorSyncUUID":"a"}}]})");
    const auto decodedTooDeep = decode<Chain>(tooDeep);
    ASSERT_FALSE(decodedTooDeep.has_value());
    EXPECT_EQ(decodedTooDeep.error().debugDescription, "The given data was not valid JSON.");
    EXPECT_FALSE(simdjsonParses(tooDeep));
}

TEST(JSONReader, ReadsAnArrayOfATypeWithinAnElementOfTheSameType) {
    const Tree tree{1, {{2, {{3, {}}, {4, {{5, {}}}}}}, {6, {}}, {7, {{8, {}}, {9, {}}}}}};
    const std::string text = testing::encoded(tree);
    EXPECT_EQ(text, R"({"value":1,"children":[{"value":2,"children":[{"value":3,"children":[]},)"
                    R"({"value":4,"children":[{"value":5,"children":[]}]}]},{"value":6,"children":[]},)"
                    R"({"value":7,"children":[{"value":8,"children":[]},{"value":9,"children":[]}]}]})");
    EXPECT_EQ(decoded<Tree>(text), tree);
}

TEST(JSONReader, ElementsLeftWithoutOptionalMembersHoldTheirDefaultsWhateverWasReadBefore) {
    const std::string full = specWith(R"("catalogEntryID":"lg-27uk850","targetPPIOverride":218)");
    const std::string specs = "[" + full + "," + std::string{spec} + "]";
    const auto bare = decoded<VirtualDisplaySpec>(spec);
    ASSERT_FALSE(bare.catalogEntryID.has_value());
    ASSERT_FALSE(bare.targetPPIOverride.has_value());

    const auto read = decoded<std::vector<VirtualDisplaySpec>>(specs);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].catalogEntryID, "lg-27uk850");
    EXPECT_EQ(read[0].targetPPIOverride, 218.0);
    EXPECT_EQ(read[1], bare);
    // Read again where the first document's elements stood.
    EXPECT_EQ(decoded<std::vector<VirtualDisplaySpec>>("[" + std::string{spec} + "]"),
              std::vector<VirtualDisplaySpec>{bare});
}

}  // namespace
}  // namespace screenweaver
