#include "HeadlessXServer/HeadlessXServerEnvironment.hpp"

#include <stdlib.h>

namespace screenweaver::testing {
namespace {

HeadlessXServer* runningServer = nullptr;
std::string startFailure = "the test program has not started one";

}  // namespace

void HeadlessXServerEnvironment::SetUp() {
    auto started = HeadlessXServer::start();
    if (!started) {
        startFailure = started.error();
        FAIL() << "the headless X server did not start: " << startFailure;
    }
    runningServer = started->release();
    ::setenv("DISPLAY", runningServer->displayName().c_str(), 1);
}

void HeadlessXServerEnvironment::TearDown() {
    delete runningServer;
    runningServer = nullptr;
    ::unsetenv("DISPLAY");
}

const HeadlessXServer* HeadlessXServerEnvironment::server() {
    return runningServer;
}

const std::string& HeadlessXServerEnvironment::failure() {
    return startFailure;
}

// Every test program that links this starts its own server.
const ::testing::Environment* const registered =
    ::testing::AddGlobalTestEnvironment(new HeadlessXServerEnvironment);

}  // namespace screenweaver::testing
