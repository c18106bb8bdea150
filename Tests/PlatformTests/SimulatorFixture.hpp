#pragma once

#include <gtest/gtest.h>

#include "CoreTypes/Clock.hpp"
#include "Platform/PlatformAPI.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver::simulation {

/// A simulator on a manual clock, its tables at hand, and a hygiene check at the end of every test.
class SimulatorFixture : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(simulator.hygieneProblems().empty()) << describeProblems(); }

    std::string describeProblems() const {
        std::string text;
        for (const std::string& problem : simulator.hygieneProblems()) {
            text += problem + "\n";
        }
        return text;
    }

    ManualClock clock;
    WindowServerSimulator simulator{clock};
    platform::PlatformAPI platform = simulator.platform();
    const platform::CoreGraphicsAPI& cg = *platform.coreGraphics;
    const platform::CoreFoundationAPI& cf = *platform.coreFoundation;
    const platform::ColorSyncAPI& colorSync = *platform.colorSync;
    const platform::ObjCRuntimeAPI& objc = *platform.objcRuntime;
    const platform::DispatchAPI& dispatch = *platform.dispatch;
};

}  // namespace screenweaver::simulation
