// The X backend against a real X server (Xorg with the dummy driver, started for the run): what one
// create and release of a virtual display, one snapshot and one applied plan cost, from the first
// request to the server's last answer. Wall time counts: most of it is the server's work and the
// round trips to it.
#include <stdlib.h>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

#include "CoreTypes/Log.hpp"
#include "DisplayKit/X11/X11DisplayProvider.hpp"
#include "HeadlessXServer/HeadlessXServer.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {
namespace {

/// Log entries are composed as usual but go nowhere, so the journal's cost is not measured.
class DiscardingLogSink final : public LogSink {
public:
    void write(std::string_view, std::string_view, LogLevel, std::string_view) override {}
};

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
    const auto previous = exchangeLogSink(std::make_shared<DiscardingLogSink>());
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
    exchangeLogSink(previous);
}
BENCHMARK(createAndReleaseOnTheXServer)->UseRealTime()->Unit(benchmark::kMicrosecond);

// A snapshot of the dummy output and one virtual display: the monitors, the CRTCs, outputs and
// modes, and each output's EDID.
void snapshotOfTheXServer(benchmark::State& state) {
    const auto previous = exchangeLogSink(std::make_shared<DiscardingLogSink>());
    const simulation::SelfAdvancingClock clock;
    VirtualDisplayManager manager{VirtualDisplayBackend::system(platform::PlatformAPI::system()), clock};
    const auto display = manager.create(wideSpec(), {});
    auto provider = X11DisplayProvider::open(std::chrono::milliseconds{1}, std::chrono::seconds{5});
    if (!display || !provider) {
        state.SkipWithError("no display or no provider");
        exchangeLogSink(previous);
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize((*provider)->snapshot());
    }
    manager.release(*display, {});
    exchangeLogSink(previous);
}
BENCHMARK(snapshotOfTheXServer)->UseRealTime()->Unit(benchmark::kMicrosecond);

// A plan that moves the virtual display down and back up, applied in turn: the settled snapshot,
// planning, validation and the commit under a grab of the server. The burst of events each commit
// causes is let end outside the timing, so the next apply starts on a settled server.
void applyOnTheXServer(benchmark::State& state) {
    const auto previous = exchangeLogSink(std::make_shared<DiscardingLogSink>());
    const simulation::SelfAdvancingClock clock;
    VirtualDisplayManager manager{VirtualDisplayBackend::system(platform::PlatformAPI::system()), clock};
    const auto display = manager.create(wideSpec(), {});
    auto provider = X11DisplayProvider::open(std::chrono::milliseconds{1}, std::chrono::seconds{5});
    if (!display || !provider) {
        state.SkipWithError("no display or no provider");
        exchangeLogSink(previous);
        return;
    }
    auto published = (*provider)->changes();
    const auto right = (*provider)->snapshot()->displays.front().bounds.size.width;
    bool down = false;
    for (auto _ : state) {
        down = !down;
        const LayoutPlan plan{.placements = {{display->displayID, {right, down ? 100.0 : 0.0}}},
                              .modeChanges = {},
                              .unmirror = {}};
        if (const auto applied = (*provider)->apply(plan, {}); !applied) {
            state.SkipWithError(applied.error().description().c_str());
            break;
        }
        state.PauseTiming();
        (void)published.next();
        state.ResumeTiming();
    }
    manager.release(*display, {});
    exchangeLogSink(previous);
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
