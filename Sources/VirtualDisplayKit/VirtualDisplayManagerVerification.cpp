// The three verifications of a new display: one pattern, three variants.
#include <fmt/format.h>

#include "CoreTypes/Log.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {
namespace {

struct NoCorrection {};

/// Test once; try the correction; poll until the deadline (a stop request ends the polling
/// early); then test, and correct and test, a last time. True when the test passed.
template <class Test, class Correct, class Pause>
bool settles(Test passes, Correct correct, Pause pause, const Clock& clock, Clock::Duration timeout,
             const StopToken& stop) {
    constexpr bool corrects = !std::is_same_v<Correct, NoCorrection>;
    if (passes()) {
        return true;
    }
    if constexpr (corrects) {
        if (correct() && passes()) {
            return true;
        }
    }
    const Clock::Instant deadline = clock.now() + timeout;
    while (clock.now() < deadline && !stop.stopRequested()) {
        pause();
        if (passes()) {
            return true;
        }
    }
    if (passes()) {
        return true;
    }
    if constexpr (corrects) {
        return correct() && passes();
    }
    return false;
}

}  // namespace

std::expected<void, VirtualDisplayError> VirtualDisplayManager::verifyPresence(std::uint32_t displayID,
                                                                               ActorLock& lock,
                                                                               const StopToken& stop) const {
    const bool present = settles([&] { return snapshot(displayID).has_value(); }, NoCorrection{},
                                 [&] { pause(lock, stop); }, clock_, settleTimeout_, stop);
    if (present) {
        return {};
    }
    Log::virtualDisplay().error(fmt::format("virtual display {} never became active", displayID));
    return std::unexpected{VirtualDisplayError::notActiveAfterCreation()};
}

std::expected<void, VirtualDisplayError> VirtualDisplayManager::verifyUnmirrored(
    std::uint32_t displayID, ActorLock& lock, const StopToken& stop) const {
    // A display missing from the list passes here: its presence was proven just before.
    const bool unmirrored = settles(
        [&] {
            const auto display = snapshot(displayID);
            return !display || !display->mirrorSource;
        },
        [&] { return probe_->breakMirroring(displayID); }, [&] { pause(lock, stop); }, clock_, settleTimeout_,
        stop);
    if (unmirrored) {
        return {};
    }
    Log::virtualDisplay().error(fmt::format("virtual display {} stayed mirrored", displayID));
    return std::unexpected{VirtualDisplayError::notActiveAfterCreation()};
}

std::expected<void, VirtualDisplayError> VirtualDisplayManager::verifyMode(std::uint32_t displayID,
                                                                           const VirtualDisplaySpec& spec,
                                                                           ActorLock& lock,
                                                                           const StopToken& stop) const {
    const bool atSize = settles(
        [&] {
            const auto display = snapshot(displayID);
            return display && display->pixelWidth == spec.pixelWidth &&
                   display->pixelHeight == spec.pixelHeight;
        },
        [&] { return probe_->selectMode(displayID, spec.pixelWidth, spec.pixelHeight); },
        [&] { pause(lock, stop); }, clock_, settleTimeout_, stop);
    if (atSize) {
        return {};
    }
    Log::virtualDisplay().error(fmt::format("virtual display {} refused its requested mode", displayID));
    return std::unexpected{VirtualDisplayError::configurationRejected()};
}

}  // namespace screenweaver
