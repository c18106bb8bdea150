#pragma once

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "DisplayKit/DisplayProvider.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver {

/// Reaches what the provider keeps private.
struct DisplayProviderTestApi {
    static std::expected<void, DisplayError> commit(const platform::PlatformAPI& platform,
                                                    const LayoutPlan& plan) {
        return DisplayProvider::commit(platform, plan);
    }
    static bool burstInFlight(const DisplayProvider& provider) { return provider.debouncer_.burstInFlight(); }
};

/// A simulated window server on a manual clock, a provider over it made on demand, and a hygiene
/// check at the end of every test (the provider is destroyed first, so its callback must be gone).
class SimulatedDisplaysTest : public testing::Test {
protected:
    static constexpr std::chrono::milliseconds debounceInterval{200};
    static constexpr std::chrono::seconds settleTimeout{2};

    void TearDown() override {
        provider_.reset();
        const auto problems = simulator.hygieneProblems();
        std::string text;
        for (const auto& problem : problems) {
            text += problem + "\n";
        }
        EXPECT_TRUE(problems.empty()) << text;
    }

    /// Makes the provider once the bursts of the set-up have been delivered, and starts the call
    /// log afresh.
    DisplayProvider& provider() {
        if (!provider_) {
            simulator.waitForCallbacks();
            provider_ = std::make_unique<DisplayProvider>(debounceInterval, settleTimeout, platform, clock);
            simulator.clearCalls();
        }
        return *provider_;
    }

    /// The recorded CoreGraphics calls whose text starts with one of `prefixes`.
    std::vector<std::string> coreGraphicsCalls(std::initializer_list<std::string_view> prefixes) const {
        std::vector<std::string> selected;
        for (const auto& call : simulator.calls(simulation::CallFamily::coreGraphics)) {
            if (std::ranges::any_of(prefixes,
                                    [&](std::string_view prefix) { return call.starts_with(prefix); })) {
                selected.push_back(call);
            }
        }
        return selected;
    }

    /// A display of `width` x `height` pixels (as many points) at 60 Hz with a ColorSync UUID.
    static simulation::SimulatedDisplay display(CGDirectDisplayID id, std::size_t width, std::size_t height,
                                                CGPoint origin) {
        auto made = simulation::makeDisplay(id, width, height);
        made.colorSyncUUID = "00000000-0000-0000-0000-00000000000" + std::to_string(id % 10);
        made.origin = origin;
        return made;
    }

    ManualClock clock;
    simulation::WindowServerSimulator simulator{clock};
    platform::PlatformAPI platform = simulator.platform();

private:
    std::unique_ptr<DisplayProvider> provider_;
};

}  // namespace screenweaver
