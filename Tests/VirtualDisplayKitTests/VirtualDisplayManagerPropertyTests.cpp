// Thousands of generated creations on the simulated window server, each checked against what must
// hold whatever the window server does: a handle exactly when the display is live, unmirrored, at
// its size and retained; nothing left behind by a failure; nothing left after a release; and no
// leaked or misused platform object.
#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "CoreTypes/CapturingLogSink.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver {
namespace {

using namespace std::chrono_literals;

/// The simulated service clock, which in addition requests a stop when its n-th sleep begins: a
/// cancellation arriving in the middle of a verification.
class CancellingClock final : public Clock {
public:
    CancellingClock(StopSource source, std::size_t stopAtSleep)
        : source_(std::move(source)), stopAtSleep_(stopAtSleep) {}

    [[nodiscard]] Instant now() const override { return inner_.now(); }

    bool sleepUntil(Instant deadline, const StopToken& stop) const override {
        if (++sleeps_ == stopAtSleep_) {
            source_.requestStop();
        }
        return inner_.sleepUntil(deadline, stop);
    }

private:
    simulation::SelfAdvancingClock inner_;
    StopSource source_;
    std::size_t stopAtSleep_;
    mutable std::size_t sleeps_ = 0;
};

struct Scenario {
    VirtualDisplaySpec spec;
    simulation::VirtualDisplayScript script;
    std::size_t stopAtSleep = 0;  // 0: never

    [[nodiscard]] std::string describe() const {
        return fmt::format(
            "{}x{} hiDPI {} target {} | refused {} reject {} zeroID {} delay {} ms mirrored {} size {} "
            "switch {} | "
            "stop at sleep {}",
            spec.pixelWidth, spec.pixelHeight, spec.hiDPI, spec.targetPPIOverride.value_or(0),
            script.refuseAttempts.size(), script.rejectSettings, script.answersZeroDisplayID,
            std::chrono::duration_cast<std::chrono::milliseconds>(script.appearanceDelay).count(),
            script.appearsMirrored,
            script.appearsAtPixelSize
                ? fmt::format("{}x{}", script.appearsAtPixelSize->first, script.appearsAtPixelSize->second)
                : "asked",
            script.acceptsModeSwitch, stopAtSleep);
    }
};

Scenario generate(std::mt19937& random) {
    const auto chance = [&](double probability) { return std::bernoulli_distribution{probability}(random); };
    const auto pick = [&](auto... values) {
        const std::array options{values...};
        return options[std::uniform_int_distribution<std::size_t>{0, options.size() - 1}(random)];
    };
    Scenario scenario;
    const auto [width, height, hiDPI] = pick(std::tuple{5120, 1440, false}, std::tuple{1920, 1080, false},
                                             std::tuple{3840, 2160, true}, std::tuple{1280, 800, false});
    scenario.spec = VirtualDisplaySpec{
        .id = UUID::random(),
        .name = "Generated",
        .pixelWidth = width,
        .pixelHeight = height,
        .refreshRate = pick(60.0, 120.0, 59.94),
        .hiDPI = hiDPI,
        .rotation = pick(0, 90),
        .dynamicRange = pick(DynamicRange::standard, DynamicRange::high, DynamicRange::reference),
        .targetPPIOverride = chance(0.3) ? std::optional{pick(110.0, 218.0, 80.0)} : std::nullopt};
    simulation::VirtualDisplayScript& script = scenario.script;
    script.refuseAttempts.assign(
        std::uniform_int_distribution<std::size_t>{0, 4}(random) * (chance(0.4) ? 1 : 0), true);
    script.rejectSettings = chance(0.08);
    script.answersZeroDisplayID = chance(0.08);
    script.appearanceDelay = pick(0ms, 0ms, 0ms, 120ms, 2500ms, 6001ms);
    script.appearsMirrored = chance(0.2);
    if (chance(0.25)) {
        const auto asked = std::pair<std::size_t, std::size_t>{static_cast<std::size_t>(width),
                                                               static_cast<std::size_t>(height)};
        script.appearsAtPixelSize =
            pick(std::pair{asked.first - 1, asked.second}, std::pair{asked.first, asked.second + 1},
                 std::pair<std::size_t, std::size_t>{800, 600});
        script.acceptsModeSwitch = chance(0.6);
    }
    scenario.stopAtSleep = chance(0.25) ? std::uniform_int_distribution<std::size_t>{1, 130}(random) : 0;
    return scenario;
}

bool isAlive(const simulation::WindowServerSimulator& simulator, CGDirectDisplayID displayID) {
    return std::ranges::any_of(simulator.virtualDisplays(),
                               [&](const simulation::VirtualDisplayRecord& record) {
                                   return record.displayID == displayID && record.alive;
                               });
}

TEST(VirtualDisplayManagerProperties, EveryCreationEndsLiveAndRetainedOrWithNothingLeftBehind) {
    const ScopedLogCapture quiet;
    std::mt19937 random{20261121};
    int created = 0;
    for (int run = 0; run < 10000; ++run) {
        const Scenario scenario = generate(random);
        SCOPED_TRACE(fmt::format("scenario {}: {}", run, scenario.describe()));
        StopSource stop;
        const CancellingClock clock{stop, scenario.stopAtSleep};
        simulation::WindowServerSimulator simulator{clock};
        auto builtIn = simulation::makeDisplay(1, 2560, 1440);
        builtIn.main = true;
        simulator.addDisplay(builtIn);
        simulator.setVirtualDisplayScript(scenario.script);
        const platform::PlatformAPI platform = simulator.platform();
        {
            VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform),
                                          clock};
            const auto handle = manager.create(scenario.spec, stop.token());
            if (handle) {
                ++created;
                const auto display = simulator.display(handle->displayID);
                ASSERT_TRUE(display);
                ASSERT_TRUE(display->currentMode);
                const simulation::SimulatedMode& mode = display->modes[*display->currentMode];
                EXPECT_EQ(display->mirrorSource, 0U);
                EXPECT_EQ(static_cast<std::int64_t>(mode.pixelWidth), scenario.spec.pixelWidth);
                EXPECT_EQ(static_cast<std::int64_t>(mode.pixelHeight), scenario.spec.pixelHeight);
                EXPECT_TRUE(isAlive(simulator, handle->displayID));
                EXPECT_EQ(handle->spec, scenario.spec);
                manager.release(*handle, {});
                EXPECT_FALSE(simulator.display(handle->displayID));
                EXPECT_FALSE(isAlive(simulator, handle->displayID));
            } else {
                EXPECT_TRUE(std::ranges::none_of(simulator.virtualDisplays(),
                                                 &simulation::VirtualDisplayRecord::alive));
                EXPECT_EQ(simulator.activeDisplayIDs(), (std::vector<CGDirectDisplayID>{1}));
            }
            if (scenario.stopAtSleep == 0 && !scenario.script.rejectSettings &&
                !scenario.script.answersZeroDisplayID &&
                scenario.script.refuseAttempts.size() <
                    VirtualDisplayGeometry::ppiLadder(scenario.spec).size() &&
                scenario.script.appearanceDelay < 6s &&
                (!scenario.script.appearsAtPixelSize || scenario.script.acceptsModeSwitch)) {
                EXPECT_TRUE(handle) << handle.error().description();
            }
        }
        const auto problems = simulator.hygieneProblems();
        EXPECT_TRUE(problems.empty()) << fmt::format("{}", fmt::join(problems, "\n"));
        if (::testing::Test::HasFailure()) {
            return;
        }
    }
    // Both roads are well travelled.
    EXPECT_GT(created, 3000);
    EXPECT_LT(created, 7000);
}

}  // namespace
}  // namespace screenweaver
