#include "VirtualDisplayKit/UnavailableVirtualDisplayManager.hpp"

#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"

namespace screenweaver {

UnavailableVirtualDisplayManager::UnavailableVirtualDisplayManager(std::string reason)
    : availability_(VirtualDisplayAvailability::unavailable(reason)),
      error_(VirtualDisplayError::apiUnavailable(std::move(reason))) {}

UnavailableVirtualDisplayManager::UnavailableVirtualDisplayManager(VirtualDisplayError error)
    : availability_(
          VirtualDisplayAvailability::unavailable(VirtualDisplayAvailabilityGate::unavailableReason(error))),
      error_(std::move(error)) {}

std::expected<VirtualDisplayHandle, VirtualDisplayError> UnavailableVirtualDisplayManager::create(
    const VirtualDisplaySpec&, const StopToken&) {
    return std::unexpected{error_};
}

void UnavailableVirtualDisplayManager::release(const VirtualDisplayHandle&, const StopToken&) {}

std::int64_t UnavailableVirtualDisplayManager::releaseOrphans(const StopToken&) {
    return 0;
}

}  // namespace screenweaver
