// The built service against a real X server (Xorg with the dummy driver): the check passes on it,
// and the parked service never connects to it.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <thread>
#include <xcb/res.h>
#include <xcb/xcb.h>

#include "ChildProcess/ChildProcess.hpp"
#include "HeadlessXServer/HeadlessXServerEnvironment.hpp"
#include "HeadlessXServer/XServerState.hpp"

namespace screenweaver {
namespace {

using testing::ChildProcess;

// How many clients the X server has, counted through its X-Resource extension.
int clientCount() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    xcb_res_query_clients_reply_t* const clients =
        xcb_res_query_clients_reply(connection, xcb_res_query_clients(connection), nullptr);
    // Not counting this connection itself.
    const int count = clients != nullptr ? xcb_res_query_clients_clients_length(clients) - 1 : -1;
    std::free(clients);
    xcb_disconnect(connection);
    return count;
}

class ServiceOnTheXServer : public ::testing::Test {
protected:
    void SetUp() override { SCREENWEAVER_ASSERT_X_SERVER(); }
};

TEST_F(ServiceOnTheXServer, TheCheckMakesVerifiesAndReleasesADisplayInFiveLines) {
    const testing::XServerState before = testing::readXServerState();
    ChildProcess child{SCREENWEAVERD_PATH, {"--self-test"}};
    const int status = child.wait();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(child.error(), "");
    const std::string dummy = std::to_string(before.monitors.at(0).name);
    const std::regex lines{
        "uid " + std::to_string(getuid()) + ", displays before: \\[" + dummy +
        "\\]\ncreated display ([0-9]+) at 150 PPI\nmachine reports: 5120x1440\nreleased\nPASS\n"};
    std::smatch match;
    ASSERT_TRUE(std::regex_match(child.output(), match, lines)) << child.output();
    EXPECT_NE(match[1].str(), dummy);
    EXPECT_EQ(testing::readXServerState(), before) << "the server lists what it had, at its old size";
}

TEST_F(ServiceOnTheXServer, TheParkedServiceHoldsNoConnectionToTheXServer) {
    const int before = clientCount();
    ASSERT_GE(before, 0) << "the X server does not count its clients";
    ChildProcess child{SCREENWEAVERD_PATH, {}};
    child.waitForErrorLine();
    ASSERT_EQ(child.error(), "Screenweaver service: started, nothing to serve yet\n");
    EXPECT_EQ(clientCount() - before, 0);
    EXPECT_TRUE(child.isRunning());
    child.stop(SIGTERM);
}

TEST_F(ServiceOnTheXServer, ACountedClientIsOneThatHoldsAConnection) {
    // The count the two tests around this one hold at zero does see a process that connects.
    const testing::XServerState state = testing::readXServerState();
    const int before = clientCount();
    ChildProcess holder{VIRTUAL_DISPLAY_HOLDER_PATH, {}};
    holder.waitForOutputLine();
    EXPECT_EQ(clientCount() - before, 1);
    holder.stop(SIGKILL);
    while (clientCount() != before) {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    // Its display is an orphan now; the next service to look removes it.
    ChildProcess check{SCREENWEAVERD_PATH, {"--self-test"}};
    EXPECT_EQ(check.wait(), 0);
    EXPECT_EQ(testing::readXServerState(), state);
}

TEST_F(ServiceOnTheXServer, TheHelpTextNeedsNoXServer) {
    const int before = clientCount();
    ChildProcess child{SCREENWEAVERD_PATH, {"--help"}};
    EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(clientCount() - before, 0);
}

}  // namespace
}  // namespace screenweaver
