#pragma once

#include <gtest/gtest.h>
#include <string>

#include "HeadlessXServer/HeadlessXServer.hpp"

namespace screenweaver::testing {

/// The headless X server of one test program: started before its first test, stopped after its
/// last; `DISPLAY` names it in between. A server that cannot start fails the program and every
/// test that needs it, saying why; nothing is skipped.
class HeadlessXServerEnvironment final : public ::testing::Environment {
public:
    void SetUp() override;
    void TearDown() override;

    /// The running server, or null (then `failure()` says why).
    [[nodiscard]] static const HeadlessXServer* server();
    [[nodiscard]] static const std::string& failure();
};

/// For a fixture's SetUp: fails the test, with the reason, when the program has no X server.
#define SCREENWEAVER_ASSERT_X_SERVER()                                                \
    ASSERT_NE(::screenweaver::testing::HeadlessXServerEnvironment::server(), nullptr) \
        << "the headless X server did not start: "                                    \
        << ::screenweaver::testing::HeadlessXServerEnvironment::failure()

}  // namespace screenweaver::testing
