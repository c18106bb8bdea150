#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/DisplayRefJSON.hpp"
#include "CoreTypes/Model/GeometryJSON.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

const UUID sampleID = *UUID::parse("12345678-9ABC-DEF0-1234-56789ABCDEF0");

TEST(DisplayRefJSON, WritesVirtualReferenceWithUnlabelledPayload) {
    EXPECT_EQ(encoded(DisplayRef::virtualDisplay(sampleID)),
              R"({"virtual":{"_0":"12345678-9ABC-DEF0-1234-56789ABCDEF0"}})");
}

TEST(DisplayRefJSON, WritesPhysicalReferenceWithColorSyncUUID) {
    EXPECT_EQ(encoded(DisplayRef::physical("1552-4-0")), R"({"physical":{"colorSyncUUID":"1552-4-0"}})");
}

TEST(DisplayRefJSON, ReadsBothCases) {
    EXPECT_EQ(decoded<DisplayRef>(R"({"virtual":{"_0":"12345678-9abc-def0-1234-56789abcdef0"}})"),
              DisplayRef::virtualDisplay(sampleID));
    EXPECT_EQ(decoded<DisplayRef>(R"({"physical":{"colorSyncUUID":"1552-4-0"}})"),
              DisplayRef::physical("1552-4-0"));
}

TEST(DisplayRefJSON, ReadsTheWritersSpellingAndAnyOtherAlike) {
    for (const DisplayRef& ref : {DisplayRef::virtualDisplay(sampleID), DisplayRef::physical("1552-4-0"),
                                  DisplayRef::physical(""), DisplayRef::physical("a\"b\\c")}) {
        const std::string written = encoded(ref);
        std::string spaced;
        for (const char character : written) {
            spaced += character;
            spaced += character == ':' || character == '{' ? " " : "";
        }
        EXPECT_EQ(decoded<DisplayRef>(written), ref) << written;
        EXPECT_EQ(decoded<DisplayRef>(spaced), ref) << spaced;
    }
}

TEST(DisplayRefJSON, WritersSpellingWithAnInvalidUUIDFailsAsAnyOther) {
    expectDecodingError<DisplayRef>(R"({"virtual":{"_0":"12345678-9ABC-DEF0-1234-56789ABCDEFG"}})",
                                    Kind::dataCorrupted, "virtual._0",
                                    "Attempted to decode UUID from invalid UUID string.");
}

TEST(DisplayRefJSON, ReferenceThatOnlyBeginsLikeTheWritersSpellingIsReadWhole) {
    EXPECT_EQ(decoded<DisplayRef>(R"({"virtual":{"_0":"12345678-9ABC-DEF0-1234-56789ABCDEF0","_0":1}})"),
              DisplayRef::virtualDisplay(sampleID));
    expectDecodingError<DisplayRef>(R"({"physical":{"colorSyncUUID":"a","colorSyncUUID":[}})",
                                    Kind::dataCorrupted, "", "The given data was not valid JSON.");
}

TEST(DisplayRefJSON, ObjectHoldingBothCasesFailsWithInvalidNumberOfKeys) {
    expectDecodingError<DisplayRef>(
        R"({"virtual":{"_0":"12345678-9ABC-DEF0-1234-56789ABCDEF0"},"physical":{"colorSyncUUID":"a"}})",
        Kind::typeMismatch, "", "Invalid number of keys found, expected one.");
}

TEST(DisplayRefJSON, RepeatedCaseKeyReadsItsFirstOccurrence) {
    EXPECT_EQ(decoded<DisplayRef>(R"({"physical":{"colorSyncUUID":"a"},"physical":{"colorSyncUUID":"b"}})"),
              DisplayRef::physical("a"));
    // The repeat is not read: its payload may be anything.
    EXPECT_EQ(decoded<DisplayRef>(R"({"physical":{"colorSyncUUID":"a"},"physical":7})"),
              DisplayRef::physical("a"));
}

TEST(DisplayRefJSON, RepeatedCaseKeyBesideAnotherCaseStillFailsWithInvalidNumberOfKeys) {
    expectDecodingError<DisplayRef>(
        R"({"physical":{"colorSyncUUID":"a"},"physical":{"colorSyncUUID":"b"},"virtual":{"_0":"x"}})",
        Kind::typeMismatch, "", "Invalid number of keys found, expected one.");
}

TEST(DisplayRefJSON, EmptyObjectFailsWithInvalidNumberOfKeys) {
    expectDecodingError<DisplayRef>("{}", Kind::typeMismatch, "",
                                    "Invalid number of keys found, expected one.");
}

TEST(DisplayRefJSON, KeysThatAreNotCaseNamesAreIgnored) {
    EXPECT_EQ(decoded<DisplayRef>(R"({"note":1,"physical":{"colorSyncUUID":"a","x":2}})"),
              DisplayRef::physical("a"));
}

TEST(DisplayRefJSON, VirtualPayloadThatIsNotAUUIDFails) {
    expectDecodingError<DisplayRef>(R"({"virtual":{"_0":"not-a-uuid"}})", Kind::dataCorrupted, "virtual._0",
                                    "Attempted to decode UUID from invalid UUID string.");
}

TEST(DisplayRefJSON, MissingNestedKeyFails) {
    expectDecodingError<DisplayRef>(R"({"physical":{}})", Kind::keyNotFound, "physical.colorSyncUUID",
                                    "No value associated with key \"colorSyncUUID\".");
    expectDecodingError<DisplayRef>(R"({"virtual":{}})", Kind::keyNotFound, "virtual._0",
                                    "No value associated with key \"_0\".");
}

TEST(DisplayRefJSON, CaseValueThatIsNotAnObjectIsTypeMismatch) {
    expectDecodingError<DisplayRef>(R"({"physical":"a"})", Kind::typeMismatch, "physical",
                                    "Expected to decode Dictionary<String, Any> but found a string instead.");
}

TEST(DisplayRefJSON, MapIsWrittenAsAlternatingArraySortedByKeyText) {
    const DisplayRefMap<Point> layout{
        {DisplayRef::virtualDisplay(sampleID), Point{1920, 0}},
        {DisplayRef::physical("b"), Point{0, -1080.5}},
        {DisplayRef::physical("a"), Point{0, 0}},
    };
    EXPECT_EQ(encoded(layout),
              R"([{"physical":{"colorSyncUUID":"a"}},[0,0],{"physical":{"colorSyncUUID":"b"}},[0,-1080.5],)"
              R"({"virtual":{"_0":"12345678-9ABC-DEF0-1234-56789ABCDEF0"}},[1920,0]])");
}

TEST(DisplayRefJSON, MapReadsPairsInAnyOrderAndTheLaterOfTwoEqualKeysWins) {
    using Layout = DisplayRefMap<Point>;
    const auto layout = decoded<Layout>(
        R"([{"physical":{"colorSyncUUID":"b"}},[1,2],{"physical":{"colorSyncUUID":"a"}},[3,4],)"
        R"({"physical":{"colorSyncUUID":"b"}},[5,6]])");
    EXPECT_EQ(layout,
              (Layout{{DisplayRef::physical("a"), Point{3, 4}}, {DisplayRef::physical("b"), Point{5, 6}}}));
}

TEST(DisplayRefJSON, MapWithOddNumberOfElementsFails) {
    expectDecodingError<DisplayRefMap<Point>>(
        R"([{"physical":{"colorSyncUUID":"a"}}])", Kind::dataCorrupted, "",
        "Expected collection of key-value pairs; encountered odd-length array instead.");
}

TEST(DisplayRefJSON, SetIsWrittenSortedAndKeepsRepeatedReferenceOnce) {
    using Refs = DisplayRefSet;
    const auto refs = decoded<Refs>(
        R"([{"physical":{"colorSyncUUID":"b"}},{"physical":{"colorSyncUUID":"a"}},{"physical":{"colorSyncUUID":"b"}}])");
    EXPECT_EQ(refs, (Refs{DisplayRef::physical("a"), DisplayRef::physical("b")}));
    EXPECT_EQ(encoded(refs), R"([{"physical":{"colorSyncUUID":"a"}},{"physical":{"colorSyncUUID":"b"}}])");
}

TEST(PointJSON, IsATwoElementArray) {
    EXPECT_EQ(encoded(Point{-1920, 0.5}), "[-1920,0.5]");
    EXPECT_EQ(decoded<Point>("[1e3, -0]"), (Point{1000, 0}));
}

TEST(PointJSON, RejectsOtherElementCounts) {
    expectDecodingError<Point>("[1]", Kind::dataCorrupted, "",
                               "Expected a point as an array of two numbers [x, y].");
    expectDecodingError<Point>("[1,2,3]", Kind::dataCorrupted, "",
                               "Expected a point as an array of two numbers [x, y].");
    expectDecodingError<Point>(R"([1,"2"])", Kind::typeMismatch, "[1]",
                               "Expected to decode Double but found a string instead.");
}

}  // namespace
}  // namespace screenweaver
