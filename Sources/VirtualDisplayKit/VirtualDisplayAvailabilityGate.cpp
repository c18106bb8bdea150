#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"

#include <fmt/format.h>

#include "CoreTypes/Overloaded.hpp"

namespace screenweaver::VirtualDisplayAvailabilityGate {

VirtualDisplayGateOutcome evaluate(bool apiResolved, int osVersion) {
    if (osVersion < minimumMajorVersion) {
        return VirtualDisplayGateOutcome::blocked(VirtualDisplayError::unsupportedOSVersion(
            fmt::format("Virtual displays need macOS {} or later.", minimumMajorVersion)));
    }
    if (!apiResolved) {
        return VirtualDisplayGateOutcome::blocked(VirtualDisplayError::apiUnavailable(
            "This version of macOS does not expose the interface used to create virtual displays."));
    }
    return VirtualDisplayGateOutcome::usable(osVersion > newestValidatedMajorVersion);
}

std::string unavailableReason(const VirtualDisplayError& error) {
    return std::visit(
        Overloaded{
            [](const VirtualDisplayError::ApiUnavailable& blocked) { return blocked.reason; },
            [](const VirtualDisplayError::UnsupportedOSVersion& blocked) { return blocked.reason; },
            [](const auto&) { return std::string{"Virtual displays are unavailable on this machine."}; },
        },
        error.value);
}

VirtualDisplayAvailability availability(const VirtualDisplayGateOutcome& outcome) {
    if (const auto* blocked = outcome.asBlocked()) {
        return VirtualDisplayAvailability::unavailable(unavailableReason(blocked->error));
    }
    return VirtualDisplayAvailability::available();
}

}  // namespace screenweaver::VirtualDisplayAvailabilityGate
