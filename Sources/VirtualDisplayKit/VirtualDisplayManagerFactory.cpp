#include "VirtualDisplayKit/VirtualDisplayManagerFactory.hpp"

#include <fmt/format.h>

#include "CoreTypes/Log.hpp"
#include "VirtualDisplayKit/UnavailableVirtualDisplayManager.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver::VirtualDisplayManagerFactory {

std::unique_ptr<VirtualDisplayManaging> make(const platform::PlatformAPI& platform,
                                             std::shared_ptr<LiveDisplayProbing> probe, const Clock& clock) {
    return make(VirtualDisplayBackend::coreGraphics(platform, std::move(probe)), clock);
}

std::unique_ptr<VirtualDisplayManaging> make(VirtualDisplayBackend backend, const Clock& clock) {
    auto manager = std::make_unique<VirtualDisplayManager>(std::move(backend), clock);
    const VirtualDisplayAvailability availability = manager->availability();
    if (const auto* unavailable = availability.asUnavailable()) {
        Log::virtualDisplay().log(fmt::format("virtual displays unavailable: {}", unavailable->reason));
        return std::make_unique<UnavailableVirtualDisplayManager>(unavailable->reason);
    }
    return manager;
}

}  // namespace screenweaver::VirtualDisplayManagerFactory
