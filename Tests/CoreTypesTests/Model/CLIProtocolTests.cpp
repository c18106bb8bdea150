#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/CLIReplyJSON.hpp"
#include "CoreTypes/Model/CLIRequestJSON.hpp"
#include "CoreTypes/Protocols/AutomationServices.hpp"

namespace screenweaver {
namespace {

using testing::decoded;
using testing::encoded;
using testing::expectDecodingError;
using Kind = DecodingError::Kind;

constexpr std::string_view displayJSON =
    R"({"ref":"physical:1","pixelWidth":1920,"pixelHeight":1080,"pointWidth":1920,"pointHeight":1080,)"
    R"("refreshRate":60,"isMain":true,"isVirtual":false,"isBuiltin":false})";

TEST(CLIRequest, EmptyObjectFailsWithInvalidNumberOfKeys) {
    expectDecodingError<CLIRequest>("{}", Kind::typeMismatch, "",
                                    "Invalid number of keys found, expected one.");
}

TEST(CLIRequest, TwoCaseKeysFailWithInvalidNumberOfKeys) {
    expectDecodingError<CLIRequest>(R"({"list":{},"status":{}})", Kind::typeMismatch, "",
                                    "Invalid number of keys found, expected one.");
}

TEST(CLIRequest, RepeatedCaseKeyReadsItsFirstOccurrence) {
    EXPECT_EQ(decoded<CLIRequest>(R"({"activate":{"group":"Desk"},"activate":{"group":"Travel"}})"),
              CLIRequest::activate("Desk"));
}

TEST(CLIRequest, CaptureWithoutGroupDecodesAndEncodesAsEmptyObject) {
    EXPECT_EQ(decoded<CLIRequest>(R"({"capture":{}})"), CLIRequest::capture(std::nullopt));
    EXPECT_EQ(encoded(CLIRequest::capture(std::nullopt)), R"({"capture":{}})");
    EXPECT_EQ(decoded<CLIRequest>(R"({"capture":{"group":null}})"), CLIRequest::capture(std::nullopt));
}

TEST(CLIRequest, CaseWithoutPayloadIgnoresKeysInItsObject) {
    EXPECT_EQ(decoded<CLIRequest>(R"({"list":{"x":1}})"), CLIRequest::list());
}

TEST(CLIRequest, KeysThatAreNotCaseNamesAreNotCounted) {
    EXPECT_EQ(decoded<CLIRequest>(R"({"version":2,"status":{}})"), CLIRequest::status());
}

TEST(CLIRequest, EveryCaseHasItsShape) {
    EXPECT_EQ(encoded(CLIRequest::list()), R"({"list":{}})");
    EXPECT_EQ(encoded(CLIRequest::activate("g")), R"({"activate":{"group":"g"}})");
    EXPECT_EQ(encoded(CLIRequest::deactivate()), R"({"deactivate":{}})");
    EXPECT_EQ(encoded(CLIRequest::capture("g")), R"({"capture":{"group":"g"}})");
    EXPECT_EQ(encoded(CLIRequest::status()), R"({"status":{}})");
    EXPECT_EQ(encoded(CLIRequest::displays()), R"({"displays":{}})");
    EXPECT_EQ(encoded(CLIRequest::displayEDID("r")), R"({"displayEDID":{"ref":"r"}})");
    EXPECT_EQ(encoded(CLIRequest::protectDisplay("r", false)),
              R"({"protectDisplay":{"ref":"r","isProtected":false}})");
}

TEST(CLIRequest, MissingPayloadKeyFailsWithItsPath) {
    expectDecodingError<CLIRequest>(R"({"activate":{}})", Kind::keyNotFound, "activate.group",
                                    "No value associated with key \"group\".");
    expectDecodingError<CLIRequest>(R"({"protectDisplay":{"ref":"r"}})", Kind::keyNotFound,
                                    "protectDisplay.isProtected",
                                    "No value associated with key \"isProtected\".");
}

TEST(CLIRequest, CaseValueThatIsNotAnObjectIsTypeMismatch) {
    expectDecodingError<CLIRequest>(R"({"list":[]})", Kind::typeMismatch, "list",
                                    "Expected to decode Dictionary<String, Any> but found an array instead.");
}

TEST(CLIRequest, MessageThatIsNotAnObjectIsTypeMismatch) {
    expectDecodingError<CLIRequest>(R"("list")", Kind::typeMismatch, "",
                                    "Expected to decode Dictionary<String, Any> but found a string instead.");
}

TEST(CLIReply, GroupsWithEmptyListEncodesAsEmptyArray) {
    EXPECT_EQ(encoded(CLIReply::groups({})), R"({"groups":{"_0":[]}})");
}

TEST(CLIReply, EveryCaseKeepsItsPayloadUnderUnderscoreZero) {
    EXPECT_EQ(encoded(CLIReply::ok("done")), R"({"ok":{"_0":"done"}})");
    EXPECT_EQ(encoded(CLIReply::error("no")), R"({"error":{"_0":"no"}})");
    EXPECT_EQ(decoded<CLIReply>(R"({"error":{"_0":"no"}})"), CLIReply::error("no"));
}

TEST(CLIReply, TwoCaseKeysFailWithInvalidNumberOfKeys) {
    expectDecodingError<CLIReply>(R"({"ok":{"_0":"a"},"error":{"_0":"b"}})", Kind::typeMismatch, "",
                                  "Invalid number of keys found, expected one.");
}

TEST(CLIReply, MissingPayloadFailsWithItsPath) {
    expectDecodingError<CLIReply>(R"({"ok":{}})", Kind::keyNotFound, "ok._0",
                                  "No value associated with key \"_0\".");
}

TEST(CLIReply, UnknownEDIDSourceIsDataCorrupted) {
    expectDecodingError<CLIReply>(
        R"({"edid":{"_0":{"ref":"r","summary":{"vendorNumber":1,"modelNumber":2,"serialNumber":3},"source":"Panel","isVirtual":false}}})",
        Kind::dataCorrupted, "edid._0.source", "Cannot initialize Source from invalid String value Panel");
}

TEST(CLIDisplay, DisplayWithoutNameDecodesWithNoName) {
    const auto display = decoded<CLIDisplay>(displayJSON);
    EXPECT_FALSE(display.name.has_value());
    EXPECT_EQ(encoded(display), displayJSON);
}

TEST(CLIDisplay, DisplayWithoutIsBuiltinFails) {
    std::string json{displayJSON};
    json.erase(json.find(R"(,"isBuiltin":false)"), std::string_view{R"(,"isBuiltin":false)"}.size());
    expectDecodingError<CLIDisplay>(json, Kind::keyNotFound, "isBuiltin",
                                    "No value associated with key \"isBuiltin\".");
}

TEST(CLIStatus, OnlyGroupNamesAndStateDescriptionAreRequired) {
    EXPECT_EQ(decoded<CLIStatus>(R"({"groupNames":["a"],"stateDescription":"idle"})"),
              (CLIStatus{.groupNames = {"a"}, .stateDescription = "idle"}));
    expectDecodingError<CLIStatus>(R"({"groupNames":[]})", Kind::keyNotFound, "stateDescription",
                                   "No value associated with key \"stateDescription\".");
}

TEST(CLIDisplayEDID, SourceRawValuesArePanelAndSystem) {
    EXPECT_EQ(rawValue(CLIDisplayEDID::Source::panel), "panel");
    EXPECT_EQ(rawValue(CLIDisplayEDID::Source::system), "system");
    EXPECT_FALSE(cliDisplayEDIDSourceFromRawValue("System").has_value());
}

// A server that answers each request with exactly one reply, to check that the interface can be
// implemented as the application does.
class EchoServer final : public CLICommandServing {
public:
    std::expected<void, AutomationError> startServing(Handler handler) override {
        handler_ = std::move(handler);
        return {};
    }
    void stopServing() override { handler_ = nullptr; }
    CLIReply answer(const CLIRequest& request) const { return handler_(request); }

private:
    Handler handler_;
};

TEST(CLICommandServing, AnswersEachRequestWithOneReply) {
    EchoServer server;
    ASSERT_TRUE(server.startServing([](const CLIRequest& request) {
        return request == CLIRequest::list() ? CLIReply::groups({"a"}) : CLIReply::error("unsupported");
    }));
    EXPECT_EQ(server.answer(CLIRequest::list()), CLIReply::groups({"a"}));
    EXPECT_EQ(server.answer(CLIRequest::status()), CLIReply::error("unsupported"));
    server.stopServing();
}

}  // namespace
}  // namespace screenweaver
