// The X backend against a real X server (Xorg with the dummy driver, started for the run): what one
// create and release of a virtual display costs, from the first request to the server's last
// answer. Wall time counts: most of it is the server's work and the round trips to it.
#include <stdlib.h>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

#include "CoreTypes/Log.hpp"
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
