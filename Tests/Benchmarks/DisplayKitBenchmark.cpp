// Costs of display arrangement: validating a large arrangement, planning and validating a plan,
// one change signal, and one snapshot of the simulated window server.

#include <benchmark/benchmark.h>
#include <fstream>
#include <string>

#include "AllocationCount.hpp"
#include "CoreTypes/Clock.hpp"
#include "DisplayKit/ArrangementPlanner.hpp"
#include "DisplayKit/ChangeDebouncer.hpp"
#include "DisplayKit/DisplayProvider.hpp"
#include "DisplayKit/LayoutValidator.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver {
namespace {

long threadCount() {
    std::ifstream status{"/proc/self/status"};
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with("Threads:")) {
            return std::stol(line.substr(8));
        }
    }
    return -1;
}

// A grid of `columns` x `rows` displays of 1920 x 1080 points, the first at (0,0).
FrameMap grid(std::uint32_t columns, std::uint32_t rows) {
    FrameMap frames;
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            frames[row * columns + column + 1] = Rect{{column * 1920.0, row * 1080.0}, {1920, 1080}};
        }
    }
    return frames;
}

void validateContiguous64(benchmark::State& state) {
    const FrameMap frames = grid(8, 8);
    for (auto _ : state) {
        auto verdict = LayoutValidator::validate(frames);
        benchmark::DoNotOptimize(verdict);
    }
}
BENCHMARK(validateContiguous64);

void planAndValidate16(benchmark::State& state) {
    DisplayTopology topology;
    for (const auto& [id, frame] : grid(4, 4)) {
        LiveDisplay display;
        display.displayID = id;
        display.ref = DisplayRef::physical("display-" + std::to_string(id));
        display.bounds = frame;
        topology.displays.push_back(display);
    }
    // Swap the two displays of the first row's ends and give every display of the second row the
    // mode it already has.
    LayoutPlan plan;
    plan.placements = {{1, {5760, 0}}, {4, {0, 0}}};
    for (std::uint32_t id = 5; id <= 8; ++id) {
        plan.modeChanges.push_back({id, {3840, 2160, 1920, 1080, 60.0}});
    }
    const auto unknown = [](std::uint32_t id) { return DisplayRef::physical(std::to_string(id)); };
    for (auto _ : state) {
        auto frames = ArrangementPlanner::plannedFrames(plan, topology, unknown);
        auto verdict = LayoutValidator::validate(*frames);
        benchmark::DoNotOptimize(verdict);
    }
}
BENCHMARK(planAndValidate16);

void changeSignal(benchmark::State& state) {
    // A quiet period far longer than the run: the timer thread sleeps throughout and every signal
    // only moves its deadline.
    ChangeDebouncer debouncer{std::chrono::hours{1}, [] { return std::optional<DisplayTopology>{}; },
                              ContinuousClock::shared()};
    debouncer.signal();
    const long threadsBefore = threadCount();
    const benchmarks::AllocationCounter allocations;
    for (auto _ : state) {
        debouncer.signal();
    }
    state.counters["allocationsPerCall"] =
        static_cast<double>(allocations.count()) / static_cast<double>(state.iterations());
    state.counters["threadsAdded"] = static_cast<double>(threadCount() - threadsBefore);
}
BENCHMARK(changeSignal);

void snapshotOf16SimulatedDisplays(benchmark::State& state) {
    const ManualClock clock;
    simulation::WindowServerSimulator simulator{clock};
    for (CGDirectDisplayID id = 1; id <= 16; ++id) {
        auto display = simulation::makeDisplay(id, 3840, 2160);
        display.colorSyncUUID = "E621E1F8-C36C-495A-93FC-0C247A3E6E" + std::to_string(10 + id);
        display.origin = {static_cast<double>(id - 1) * 3840, 0};
        simulator.addDisplay(display);
    }
    simulator.waitForCallbacks();
    const platform::PlatformAPI platform = simulator.platform();
    for (auto _ : state) {
        auto topology = DisplayProvider::takeSnapshot(platform);
        benchmark::DoNotOptimize(topology);
        // The simulator records every call; keep its log from growing across iterations.
        state.PauseTiming();
        simulator.clearCalls();
        state.ResumeTiming();
    }
}
BENCHMARK(snapshotOf16SimulatedDisplays);

}  // namespace
}  // namespace screenweaver

BENCHMARK_MAIN();
