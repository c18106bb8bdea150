#pragma once

#include <gtest/gtest.h>
#include <string>

#include "CoreTypes/CapturingLogSink.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "SelfAdvancingClock.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver::testing {

/// A simulated machine with one built-in 2560x1440 display (ID 1), a clock that jumps to each
/// sleeper's deadline (so a six-second verification takes no real time), captured logs, and the
/// simulator's hygiene checks at the end of every test.
class SimulatedMachine : public ::testing::Test {
public:
    static VirtualDisplaySpec wideSpec() {
        return VirtualDisplaySpec{
            .id = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
            .name = "Service self-test",
            .catalogEntryID = std::nullopt,
            .pixelWidth = 5120,
            .pixelHeight = 1440,
            .refreshRate = 60.0,
            .hiDPI = false,
            .rotation = 0,
            .dynamicRange = DynamicRange::standard,
            .targetPPIOverride = std::nullopt,
        };
    }

protected:
    SimulatedMachine() {
        simulation::SimulatedDisplay builtIn = simulation::makeDisplay(1, 2560, 1440);
        builtIn.builtin = true;
        builtIn.main = true;
        builtIn.vendorNumber = 0x610;
        simulator.addDisplay(builtIn);
        simulator.clearCalls();
    }

    void TearDown() override {
        std::string problems;
        for (const std::string& problem : simulator.hygieneProblems()) {
            problems += problem + "\n";
        }
        EXPECT_EQ(problems, "");
    }

    [[nodiscard]] std::vector<LogEntry> logged() const { return capture.entries("virtualDisplay"); }
    [[nodiscard]] Clock::Duration elapsed() const { return clock.now() - start; }

    static LogEntry entry(LogLevel level, std::string message) {
        return {"org.screenweaver", "virtualDisplay", level, std::move(message)};
    }

    ScopedLogCapture capture;
    simulation::SelfAdvancingClock clock;
    Clock::Instant start = clock.now();
    simulation::WindowServerSimulator simulator{clock};
    platform::PlatformAPI platform = simulator.platform();
};

}  // namespace screenweaver::testing
