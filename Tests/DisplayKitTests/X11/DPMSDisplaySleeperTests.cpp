// Putting an X server's displays to sleep through DPMS. No headless X server offers the extension,
// so the real one is asked only for the refusal; the requests themselves are checked against a
// recorded table that answers as a server with DPMS would.
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "CoreTypes/CapturingLogSink.hpp"
#include "DisplayKit/X11/DPMSDisplaySleeper.hpp"
#include "DisplayKit/X11/X11DisplayProvider.hpp"
#include "HeadlessXServer/HeadlessXServerEnvironment.hpp"

namespace screenweaver {
namespace {

using platform::x11::XCBDPMSAPI;

// A server with DPMS, as far as the table tells: every call recorded, every answer scripted.
namespace recorded {
std::vector<std::string> calls;
bool present = true;
bool capable = true;
std::uint16_t powerLevel = XCB_DPMS_DPMS_MODE_ON;
std::uint8_t refusedForceLevel = 0;  // an X error code, 0 for none
constexpr unsigned int forceLevelSequence = 77;

const xcb_query_extension_reply_t* extensionData(xcb_connection_t*, xcb_extension_t* extension) {
    calls.push_back(std::string{"xcb_get_extension_data("} + extension->name + ")");
    static xcb_query_extension_reply_t reply{};
    reply.present = present ? 1 : 0;
    return &reply;
}
xcb_dpms_capable_cookie_t capableRequest(xcb_connection_t*) {
    calls.emplace_back("xcb_dpms_capable()");
    return {1};
}
xcb_dpms_capable_reply_t* capableReply(xcb_connection_t*, xcb_dpms_capable_cookie_t, xcb_generic_error_t**) {
    auto* const reply =
        static_cast<xcb_dpms_capable_reply_t*>(std::calloc(1, sizeof(xcb_dpms_capable_reply_t)));
    reply->capable = capable ? 1 : 0;
    return reply;
}
xcb_dpms_info_cookie_t infoRequest(xcb_connection_t*) {
    calls.emplace_back("xcb_dpms_info()");
    return {2};
}
xcb_dpms_info_reply_t* infoReply(xcb_connection_t*, xcb_dpms_info_cookie_t, xcb_generic_error_t**) {
    auto* const reply = static_cast<xcb_dpms_info_reply_t*>(std::calloc(1, sizeof(xcb_dpms_info_reply_t)));
    reply->power_level = powerLevel;
    reply->state = 1;
    return reply;
}
xcb_void_cookie_t enable(xcb_connection_t*) {
    calls.emplace_back("xcb_dpms_enable_checked()");
    return {3};
}
xcb_void_cookie_t forceLevel(xcb_connection_t*, uint16_t level) {
    calls.push_back("xcb_dpms_force_level_checked(" + std::to_string(level) + ")");
    return {forceLevelSequence};
}
xcb_generic_error_t* requestCheck(xcb_connection_t*, xcb_void_cookie_t cookie) {
    if (cookie.sequence != forceLevelSequence || refusedForceLevel == 0) {
        return nullptr;
    }
    auto* const error = static_cast<xcb_generic_error_t*>(std::calloc(1, sizeof(xcb_generic_error_t)));
    error->error_code = refusedForceLevel;
    return error;
}

XCBDPMSAPI table() {
    XCBDPMSAPI api = platform::x11::systemXCBDPMS();
    api.xcb_get_extension_data = &extensionData;
    api.xcb_request_check = &requestCheck;
    api.xcb_dpms_capable = &capableRequest;
    api.xcb_dpms_capable_reply = &capableReply;
    api.xcb_dpms_info = &infoRequest;
    api.xcb_dpms_info_reply = &infoReply;
    api.xcb_dpms_enable_checked = &enable;
    api.xcb_dpms_force_level_checked = &forceLevel;
    return api;
}
}  // namespace recorded

class DPMSSleep : public ::testing::Test {
protected:
    void SetUp() override {
        SCREENWEAVER_ASSERT_X_SERVER();
        recorded::calls.clear();
        recorded::present = true;
        recorded::capable = true;
        recorded::powerLevel = XCB_DPMS_DPMS_MODE_ON;
        recorded::refusedForceLevel = 0;
    }

    ScopedLogCapture capture;
    XCBDPMSAPI dpms = recorded::table();
};

TEST_F(DPMSSleep, TheHeadlessServerHasNoDPMSToPutDisplaysToSleepWith) {
    DPMSDisplaySleeper sleeper;
    EXPECT_EQ(sleeper.sleepDisplays().error(),
              DisplayError::displaySleepFailed("the X server has no DPMS extension"));
    EXPECT_TRUE(capture.entries().empty());
}

TEST_F(DPMSSleep, EnablesDPMSAndForcesItOffThenLogsOnce) {
    DPMSDisplaySleeper sleeper{platform::x11::systemXCBRandR(), dpms};
    ASSERT_TRUE(sleeper.sleepDisplays());
    EXPECT_EQ(recorded::calls,
              (std::vector<std::string>{"xcb_get_extension_data(DPMS)", "xcb_dpms_capable()",
                                        "xcb_dpms_enable_checked()", "xcb_dpms_force_level_checked(3)"}));
    EXPECT_EQ(capture.entries(),
              (std::vector<LogEntry>{
                  {"org.screenweaver", "display", LogLevel::defaultLevel, "displays asked to sleep"}}));
}

TEST_F(DPMSSleep, AServerThatCannotPowerDownIsRefusedBeforeAnyChange) {
    recorded::capable = false;
    DPMSDisplaySleeper sleeper{platform::x11::systemXCBRandR(), dpms};
    EXPECT_EQ(sleeper.sleepDisplays().error(),
              DisplayError::displaySleepFailed(
                  "the X server cannot power its displays down (it is not DPMS capable)"));
    EXPECT_EQ(recorded::calls,
              (std::vector<std::string>{"xcb_get_extension_data(DPMS)", "xcb_dpms_capable()"}));
}

TEST_F(DPMSSleep, ARefusedForcedLevelIsTheReasonAndNothingIsLogged) {
    recorded::refusedForceLevel = XCB_MATCH;
    DPMSDisplaySleeper sleeper{platform::x11::systemXCBRandR(), dpms};
    EXPECT_EQ(sleeper.sleepDisplays().error(),
              DisplayError::displaySleepFailed("DPMSForceLevel failed (BadMatch, X error 8)"));
    EXPECT_TRUE(capture.entries().empty());
}

TEST_F(DPMSSleep, WithoutAnXServerThereIsNothingToPutToSleep) {
    const char* const display = std::getenv("DISPLAY");
    ASSERT_NE(display, nullptr);
    const std::string named = display;
    ::setenv("DISPLAY", ":9999", 1);
    DPMSDisplaySleeper sleeper{platform::x11::systemXCBRandR(), dpms};
    const auto slept = sleeper.sleepDisplays();
    ::setenv("DISPLAY", named.c_str(), 1);
    EXPECT_EQ(slept.error(), DisplayError::displaySleepFailed(
                                 "no X server to put to sleep: the X display could not be opened"));
    EXPECT_TRUE(recorded::calls.empty());
}

TEST_F(DPMSSleep, OutputsArePoweredDownWhileDPMSHasThemOff) {
    recorded::powerLevel = XCB_DPMS_DPMS_MODE_OFF;
    auto provider = X11DisplayProvider::open(std::chrono::milliseconds{500}, std::chrono::seconds{3},
                                             platform::x11::systemXCBRandR(), &dpms);
    ASSERT_TRUE(provider);
    EXPECT_TRUE((*provider)->snapshot()->displays.at(0).isAsleep);
    recorded::powerLevel = XCB_DPMS_DPMS_MODE_ON;
    EXPECT_FALSE((*provider)->snapshot()->displays.at(0).isAsleep);
}

}  // namespace
}  // namespace screenweaver
