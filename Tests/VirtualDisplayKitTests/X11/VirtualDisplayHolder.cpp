// A process that makes one virtual display on the X server `DISPLAY` names, says its display ID on
// standard output and then waits to be killed: the owner that dies without releasing, for the
// orphan tests.
#include <unistd.h>

#include <cstdio>

#include "CoreTypes/Clock.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

int main() {
    using namespace screenweaver;
    const platform::PlatformAPI platform = platform::PlatformAPI::system();
    VirtualDisplayManager manager{VirtualDisplayBackend::system(platform), ContinuousClock::shared()};
    const VirtualDisplaySpec spec{
        .id = *UUID::parse("0E5A0000-0000-4000-8000-000000000001"),
        .name = "Orphan",
        .catalogEntryID = std::nullopt,
        .pixelWidth = 1280,
        .pixelHeight = 800,
        .refreshRate = 60.0,
        .hiDPI = false,
        .rotation = 0,
        .dynamicRange = DynamicRange::standard,
        .targetPPIOverride = std::nullopt,
    };
    const auto handle = manager.create(spec, {});
    if (!handle) {
        std::printf("failed: %s\n", handle.error().description().c_str());
        return 1;
    }
    std::printf("%u\n", handle->displayID);
    std::fflush(stdout);
    for (;;) {
        pause();
    }
}
