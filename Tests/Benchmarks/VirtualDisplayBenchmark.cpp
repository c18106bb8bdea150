// The cost of the service's own work in creating and releasing one virtual display on the simulated
// window server, with the display appearing at once (no waits), and of the pieces of that road.
// Every figure includes the simulator's side of each call (it records every call as a line of
// text), so the pieces show where the time goes.
#include <benchmark/benchmark.h>
#include <memory>

#include "DiscardedLog.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/PrivateAPI/NativeDisplayBuilder.hpp"
#include "VirtualDisplayKit/PrivateAPI/PrivateAPIResolver.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver {
namespace {

VirtualDisplaySpec wideSpec() {
    return VirtualDisplaySpec{.id = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
                              .name = "Service self-test",
                              .pixelWidth = 5120,
                              .pixelHeight = 1440,
                              .refreshRate = 60.0};
}

struct Machine {
    Machine() {
        auto builtIn = simulation::makeDisplay(1, 2560, 1440);
        builtIn.main = true;
        simulator.addDisplay(builtIn);
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    /// The simulator keeps every call; its log is emptied outside the timed region now and then.
    void trimCallLog(benchmark::State& state, std::int64_t iteration) {
        if (iteration % 256 == 0) {
            state.PauseTiming();
            simulator.clearCalls();
            state.ResumeTiming();
        }
    }

    const benchmarks::DiscardedLog quiet;
    simulation::SelfAdvancingClock clock;
    simulation::WindowServerSimulator simulator{clock};
    platform::PlatformAPI platform = simulator.platform();
};

void createAndRelease(benchmark::State& state) {
    Machine machine;
    VirtualDisplayManager manager{
        machine.platform, std::make_shared<CoreGraphicsDisplayProbe>(machine.platform), machine.clock};
    const VirtualDisplaySpec spec = wideSpec();
    std::int64_t iteration = 0;
    for (auto _ : state) {
        const auto handle = manager.create(spec, {});
        manager.release(*handle, {});
        machine.trimCallLog(state, ++iteration);
    }
}
BENCHMARK(createAndRelease);

void buildAndDrop(benchmark::State& state) {
    Machine machine;
    const NativeDisplayBuilder builder{
        *machine.platform.objcRuntime, *machine.platform.coreFoundation,
        *PrivateAPIResolver::resolve(machine.platform.objcRuntime),
        machine.platform.dispatch->dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)};
    const VirtualDisplayRecipe recipe = VirtualDisplayRecipe::make(wideSpec(), 150.0);
    std::int64_t iteration = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(builder.makeDisplay(recipe));
        machine.trimCallLog(state, ++iteration);
    }
}
BENCHMARK(buildAndDrop);

void observeActiveDisplays(benchmark::State& state) {
    Machine machine;
    machine.simulator.addDisplay(simulation::makeDisplay(2, 5120, 1440));
    CoreGraphicsDisplayProbe probe{machine.platform};
    std::int64_t iteration = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(probe.activeDisplays());
        machine.trimCallLog(state, ++iteration);
    }
}
BENCHMARK(observeActiveDisplays);

void validateAndMakeRecipe(benchmark::State& state) {
    const VirtualDisplaySpec spec = wideSpec();
    for (auto _ : state) {
        benchmark::DoNotOptimize(VirtualDisplayGeometry::validate(spec));
        benchmark::DoNotOptimize(
            VirtualDisplayRecipe::make(spec, VirtualDisplayGeometry::ppiLadder(spec).front()));
    }
}
BENCHMARK(validateAndMakeRecipe);

}  // namespace
}  // namespace screenweaver

BENCHMARK_MAIN();
