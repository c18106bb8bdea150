// The X backend against a real X server (Xorg with the dummy driver, started for the run): what one
// create and release of a virtual display, one snapshot and one applied plan cost, from the first
// request to the server's last answer. Wall time counts: most of it is the server's work and the
// round trips to it.
#include <stdlib.h>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

#include "DiscardedLog.hpp"
#include "DisplayKit/X11/X11DisplayProvider.hpp"
#include "HeadlessXServer/HeadlessXServer.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {
namespace {

VirtualDisplaySpec wideSpec() {
    return VirtualDisplaySpec{.id = *UUID::parse("5E1F7E57-0000-4000-8000-000000000001"),
                              .name = "Service self-test",
                              .catalogEntryID = std::nullopt,
                              .pixelWidth = 5120,
                              .pixelHeight = 1440,
                              .refreshRate = 60.0,
                              .hiDPI = false,
                              .rotation = 0,
                              .dynamicRange = DynamicRange::standard,
                              .targetPPIOverride = std::nullopt};
}

void createAndReleaseOnTheXServer(benchmark::State& state) {
    const benchmarks::DiscardedLog quiet;
    const simulation::SelfAdvancingClock clock;
    VirtualDisplayManager manager{VirtualDisplayBackend::system(platform::PlatformAPI::system()), clock};
    const VirtualDisplaySpec spec = wideSpec();
    for (auto _ : state) {
        const auto handle = manager.create(spec, {});
        if (!handle) {
            state.SkipWithError(handle.error().description().c_str());
            break;
        }
        manager.release(*handle, {});
    }
}
BENCHMARK(createAndReleaseOnTheXServer)->UseRealTime()->Unit(benchmark::kMicrosecond);

// The dummy output and one virtual display, and a provider of the server's arrangement.
struct Arrangement {
    explicit Arrangement(benchmark::State& benchmarkState) : state(benchmarkState) {
        if (!ready()) {
            state.SkipWithError("no display or no provider");
        }
    }
    ~Arrangement() {
        if (display) {
            manager.release(*display, {});
        }
    }
    Arrangement(const Arrangement&) = delete;
    Arrangement& operator=(const Arrangement&) = delete;

    [[nodiscard]] bool ready() const { return display && provider; }

    benchmark::State& state;
    const benchmarks::DiscardedLog quiet;
    const simulation::SelfAdvancingClock clock;
    VirtualDisplayManager manager{VirtualDisplayBackend::system(platform::PlatformAPI::system()), clock};
    std::expected<VirtualDisplayHandle, VirtualDisplayError> display = manager.create(wideSpec(), {});
    std::expected<std::unique_ptr<X11DisplayProvider>, platform::x11::X11Error> provider =
        X11DisplayProvider::open(std::chrono::milliseconds{1}, std::chrono::seconds{5});
};

// A snapshot: the monitors, the CRTCs, outputs and modes, and each output's EDID.
void snapshotOfTheXServer(benchmark::State& state) {
    Arrangement arrangement{state};
    if (!arrangement.ready()) {
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize((*arrangement.provider)->snapshot());
    }
}
BENCHMARK(snapshotOfTheXServer)->UseRealTime()->Unit(benchmark::kMicrosecond);

// A plan that moves the virtual display down and back up, applied in turn: the settled snapshot,
// planning, validation and the commit under a grab of the server. The burst of events each commit
// causes is let end outside the timing, so the next apply starts on a settled server.
void applyOnTheXServer(benchmark::State& state) {
    Arrangement arrangement{state};
    if (!arrangement.ready()) {
        return;
    }
    X11DisplayProvider& provider = **arrangement.provider;
    auto published = provider.changes();
    const double right = provider.snapshot()->displays.front().bounds.size.width;
    bool down = false;
    for (auto _ : state) {
        down = !down;
        const LayoutPlan plan{.placements = {{arrangement.display->displayID, {right, down ? 100.0 : 0.0}}},
                              .modeChanges = {},
                              .unmirror = {}};
        if (const auto applied = provider.apply(plan, {}); !applied) {
            state.SkipWithError(applied.error().description().c_str());
            break;
        }
        state.PauseTiming();
        (void)published.next();
        state.ResumeTiming();
    }
}
BENCHMARK(applyOnTheXServer)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace screenweaver

int main(int argc, char** argv) {
    auto server = screenweaver::testing::HeadlessXServer::start();
    if (!server) {
        std::fprintf(stderr, "the headless X server did not start: %s\n", server.error().c_str());
        return 1;
    }
    ::setenv("DISPLAY", (*server)->displayName().c_str(), 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
