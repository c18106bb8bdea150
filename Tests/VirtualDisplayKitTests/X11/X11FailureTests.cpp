// What the X backend leaves behind when the server refuses or the connection breaks, and what
// becomes of the displays of a process that died without releasing them.
#include <signal.h>

#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>

#include "ChildProcess/ChildProcess.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"
#include "X11Testing.hpp"

namespace screenweaver {
namespace {

using platform::x11::XCBRandRAPI;
using testing::OnTheXServer;

// Tables with one entry replaced, each replacement handing the request to the real library after
// spoiling it: the errors come from the real server.
namespace spoiled {
const XCBRandRAPI& real = platform::x11::systemXCBRandR();

// The monitor goes out without a name: the server answers BadAtom. (The system sends only its
// monitors through xcb_send_request; the record is the request's second part.)
unsigned int namelessMonitor(xcb_connection_t* c, int flags, iovec* vector,
                             const xcb_protocol_request_t* request) {
    static_cast<xcb_randr_monitor_info_t*>(vector[1].iov_base)->name = XCB_ATOM_NONE;
    return real.xcb_send_request(c, flags, vector, request);
}

// The connection's socket is shut before the request leaves: the connection is lost.
unsigned int lostBeforeMonitor(xcb_connection_t* c, int flags, iovec* vector,
                               const xcb_protocol_request_t* request) {
    ::shutdown(real.xcb_get_file_descriptor(c), SHUT_RDWR);
    return real.xcb_send_request(c, flags, vector, request);
}

xcb_void_cookie_t lostBeforeScreenSize(xcb_connection_t* c, xcb_window_t window, uint16_t width,
                                       uint16_t height, uint32_t mmWidth, uint32_t mmHeight) {
    ::shutdown(real.xcb_get_file_descriptor(c), SHUT_RDWR);
    return real.xcb_randr_set_screen_size_checked(c, window, width, height, mmWidth, mmHeight);
}

xcb_randr_get_monitors_cookie_t lostBeforeMonitors(xcb_connection_t* c, xcb_window_t window, uint8_t active) {
    ::shutdown(real.xcb_get_file_descriptor(c), SHUT_RDWR);
    return real.xcb_randr_get_monitors(c, window, active);
}

// Only the first monitor sent goes out without a name; what follows is sent as it is.
int sent = 0;
unsigned int firstMonitorNameless(xcb_connection_t* c, int flags, iovec* vector,
                                  const xcb_protocol_request_t* request) {
    if (++sent == 1) {
        static_cast<xcb_randr_monitor_info_t*>(vector[1].iov_base)->name = XCB_ATOM_NONE;
    }
    return real.xcb_send_request(c, flags, vector, request);
}

// Every screen size the server is asked for is out of its range: BadValue.
xcb_void_cookie_t screenTooSmall(xcb_connection_t* c, xcb_window_t window, uint16_t, uint16_t,
                                 uint32_t mmWidth, uint32_t mmHeight) {
    return real.xcb_randr_set_screen_size_checked(c, window, 1, 1, mmWidth, mmHeight);
}
}  // namespace spoiled

using X11Failures = OnTheXServer;

TEST_F(X11Failures, AMonitorTheServerRefusesIsARefusedRungAndLeavesTheServerAsItWas) {
    XCBRandRAPI api = spoiled::real;
    api.xcb_send_request = &spoiled::namelessMonitor;
    VirtualDisplayManager manager{backend(&api), clock};
    const auto handle = manager.create(spec(1920, 1080), {});
    ASSERT_FALSE(handle);
    EXPECT_EQ(handle.error(),
              VirtualDisplayError::creationFailed(
                  "the X server refused a display of 1920x1080: RRSetMonitor failed (BadAtom, "
                  "X error 5)"));
}

TEST_F(X11Failures, AScreenTheServerWillNotMakeTakesTheNewMonitorAwayAgain) {
    XCBRandRAPI api = spoiled::real;
    api.xcb_randr_set_screen_size_checked = &spoiled::screenTooSmall;
    VirtualDisplayManager manager{backend(&api), clock};
    const auto handle = manager.create(spec(1920, 1080), {});
    ASSERT_FALSE(handle);
    EXPECT_EQ(handle.error(), VirtualDisplayError::creationFailed(
                                  "the X server refused a display of 1920x1080: RRSetScreenSize failed "
                                  "(BadValue, X error 2)"));
}

TEST_F(X11Failures, AConnectionLostBeforeTheMonitorIsAddedChangesNothing) {
    XCBRandRAPI api = spoiled::real;
    api.xcb_send_request = &spoiled::lostBeforeMonitor;
    VirtualDisplayBackend made = backend(&api);
    const auto probe = made.probe;
    VirtualDisplayManager manager{std::move(made), clock};
    const auto handle = manager.create(spec(1920, 1080), {});
    ASSERT_FALSE(handle);
    EXPECT_EQ(handle.error(), VirtualDisplayError::creationFailed(
                                  "the X server refused a display of 1920x1080: the connection to the X "
                                  "server was lost"));
    EXPECT_TRUE(probe->activeDisplays().empty()) << "a lost connection lists nothing";
    EXPECT_FALSE(probe->breakMirroring(before.monitors.at(0).name));
    EXPECT_FALSE(probe->selectMode(before.monitors.at(0).name, 1920, 1080));
}

TEST_F(X11Failures, AMonitorLeftByALostConnectionGoesAtTheNextListing) {
    XCBRandRAPI api = spoiled::real;
    api.xcb_randr_set_screen_size_checked = &spoiled::lostBeforeScreenSize;
    {
        VirtualDisplayManager manager{backend(&api), clock};
        ASSERT_FALSE(manager.create(spec(1920, 1080), {}));
    }
    // The monitor was added before the connection broke; its owner went with the connection.
    const auto left = testing::readXServerState().monitors;
    ASSERT_EQ(left.size(), 2U);
    const auto parts = platform::x11::VirtualMonitorName::parse(left[1].nameText);
    ASSERT_TRUE(parts);
    testing::waitUntilWindowIsGone(parts->owner);
    const VirtualDisplayBackend observer = backend();
    const auto listed = observer.probe->activeDisplays();
    EXPECT_EQ(listed.size(), 2U) << "the orphan is listed once more";
    EXPECT_EQ(testing::readXServerState(), before) << "and then removed";
}

TEST_F(X11Failures, AProbeWhoseConnectionIsLostListsNothingAndCorrectsNothing) {
    XCBRandRAPI api = spoiled::real;
    api.xcb_randr_get_monitors = &spoiled::lostBeforeMonitors;
    const VirtualDisplayBackend made = backend(&api);
    EXPECT_TRUE(made.probe->activeDisplays().empty());
    EXPECT_FALSE(made.probe->breakMirroring(before.monitors.at(0).name));
    EXPECT_FALSE(made.probe->selectMode(before.monitors.at(0).name, 1920, 1080));
}

TEST_F(X11Failures, AResizeTheServerRefusesPutsTheMonitorAndTheScreenBack) {
    VirtualDisplayManager manager{backend(), clock};
    const auto handle = manager.create(spec(2560, 1440), {});
    ASSERT_TRUE(handle);
    const testing::XServerState withDisplay = testing::readXServerState();
    XCBRandRAPI api = spoiled::real;
    api.xcb_send_request = &spoiled::firstMonitorNameless;
    spoiled::sent = 0;
    const VirtualDisplayBackend refusing = backend(&api);
    // Wider than the screen: it grows, the resized monitor is refused, the old one comes back.
    EXPECT_FALSE(refusing.probe->selectMode(handle->displayID, 3000, 1440));
    EXPECT_EQ(testing::readXServerState(), withDisplay);
    manager.release(*handle, {});
}

using X11Orphans = OnTheXServer;

TEST_F(X11Orphans, TheDisplayOfAKilledProcessIsFoundAndGoneWithinTheWait) {
    testing::ChildProcess holder{VIRTUAL_DISPLAY_HOLDER_PATH, {}};
    holder.waitForOutputLine();
    const std::uint32_t orphan = static_cast<std::uint32_t>(std::stoul(holder.output()));
    const auto shown = monitor(orphan);
    ASSERT_TRUE(shown) << holder.output();
    holder.stop(SIGKILL);
    testing::waitUntilWindowIsGone(platform::x11::VirtualMonitorName::parse(shown->nameText)->owner);
    ASSERT_TRUE(monitor(orphan)) << "nothing has removed it yet";

    VirtualDisplayManager manager{backend(), clock};
    const Clock::Instant start = clock.now();
    EXPECT_EQ(manager.releaseOrphans({}), 1);
    EXPECT_EQ(clock.now() - start, VirtualDisplayManager::defaultPollInterval) << "gone at the first poll";
    EXPECT_EQ(logged(), (std::vector<LogEntry>{{"org.screenweaver", "virtualDisplay", LogLevel::defaultLevel,
                                                "found 1 virtual display(s) without a live owner"}}));
    EXPECT_FALSE(monitor(orphan));
}

TEST_F(X11Orphans, TheDisplaysOfALiveOwnerAreKept) {
    VirtualDisplayManager owner{backend(), clock};
    const auto handle = owner.create(spec(1280, 800), {});
    ASSERT_TRUE(handle);
    const VirtualDisplayBackend other = backend();
    EXPECT_EQ(other.probe->activeDisplays().size(), 2U);
    EXPECT_EQ(other.probe->activeDisplays().size(), 2U) << "its owner window is alive";
    owner.release(*handle, {});
}

}  // namespace
}  // namespace screenweaver
