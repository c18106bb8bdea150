#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/DDCCapabilities.hpp"
#include "CoreTypes/Model/DisplayEDIDSummaryJSON.hpp"
#include "CoreTypes/Model/GroupEngineState.hpp"
#include "CoreTypes/Protocols/DDCControlling.hpp"
#include "CoreTypes/Protocols/DisplayEDIDReading.hpp"
#include "CoreTypes/Protocols/GroupActivating.hpp"
#include "CoreTypes/Protocols/SystemServices.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

const UUID groupID = *UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");

TEST(DisplayEDIDSummary, SummaryWithOnlyTheThreeNumbersEncodesExactlyThoseKeys) {
    EXPECT_EQ(encoded(DisplayEDIDSummary{.vendorNumber = 7789, .modelNumber = 23305, .serialNumber = 1}),
              R"({"vendorNumber":7789,"modelNumber":23305,"serialNumber":1})");
}

TEST(DisplayEDIDSummary, ObjectWithoutSerialNumberFailsToRead) {
    expectDecodingError<DisplayEDIDSummary>(R"({"vendorNumber":1,"modelNumber":2})", Kind::keyNotFound,
                                            "serialNumber", "No value associated with key \"serialNumber\".");
}

TEST(DisplayEDIDSummary, ObjectWithoutProductNameReadsWithNoProductName) {
    const auto summary = decoded<DisplayEDIDSummary>(
        R"({"vendorNumber":1,"modelNumber":2,"serialNumber":3,"productName":null})");
    EXPECT_FALSE(summary.productName.has_value());
    EXPECT_EQ(summary, (DisplayEDIDSummary{.vendorNumber = 1, .modelNumber = 2, .serialNumber = 3}));
}

TEST(UnavailableEDIDReader, AnswersAbsentForIdentifierZeroAndForAnyDisplay) {
    const UnavailableEDIDReader reader;
    const DisplayEDIDReading& reading = reader;
    EXPECT_FALSE(reading.edidSummary(0).has_value());
    EXPECT_FALSE(reading.edidSummary(1).has_value());
    EXPECT_FALSE(reading.edidSummary(0xFFFFFFFFU).has_value());
}

TEST(GroupEngineState, IdleHasNoActiveGroup) {
    EXPECT_FALSE(GroupEngineState::idle().activeGroupID().has_value());
}

TEST(GroupEngineState, SettlingNamesItsGroup) {
    EXPECT_EQ(GroupEngineState::settling(groupID).activeGroupID(), groupID);
}

TEST(GroupEngineState, EveryBusyCaseNamesItsGroup) {
    for (const auto& state :
         {GroupEngineState::validating(groupID), GroupEngineState::creating(groupID),
          GroupEngineState::verifying(groupID), GroupEngineState::arranging(groupID),
          GroupEngineState::releasingOld(groupID), GroupEngineState::active(groupID),
          GroupEngineState::rollingBack(groupID), GroupEngineState::failed(groupID, "x")}) {
        EXPECT_EQ(state.activeGroupID(), groupID);
    }
}

TEST(GroupEngineState, FailedWithoutGroupHasNoActiveGroup) {
    EXPECT_FALSE(GroupEngineState::failed(std::nullopt, "x").activeGroupID().has_value());
}

TEST(GroupEngineState, FailedDiffersByReasonAndEqualsItself) {
    const GroupEngineState first = GroupEngineState::failed(groupID, "a");
    EXPECT_NE(first, GroupEngineState::failed(groupID, "b"));
    EXPECT_EQ(first, first);
    EXPECT_EQ(first, GroupEngineState::failed(groupID, "a"));
    EXPECT_NE(GroupEngineState::active(groupID), GroupEngineState::settling(groupID));
}

TEST(DDCCapabilities, ControlSetsWithTheSameMembersInAnotherInsertionOrderAreEqual) {
    DDCCapabilities first{{}, std::nullopt, false};
    first.supportedControls.insert(DDCControl::brightness);
    first.supportedControls.insert(DDCControl::volume);
    first.supportedControls.insert(DDCControl::inputSource);
    DDCCapabilities second{{}, std::nullopt, false};
    second.supportedControls.insert(DDCControl::inputSource);
    second.supportedControls.insert(DDCControl::brightness);
    second.supportedControls.insert(DDCControl::volume);
    EXPECT_EQ(first, second);
    second.capabilityString = "(prot(monitor))";
    EXPECT_NE(first, second);
}

}  // namespace
}  // namespace screenweaver
