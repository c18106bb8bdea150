#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

#include <algorithm>
#include <fmt/format.h>

#include "CoreTypes/Log.hpp"
#include "CoreTypes/VirtualDisplayVendor.hpp"
#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"
#include "VirtualDisplayKit/VirtualDisplayRecipe.hpp"

namespace screenweaver {

VirtualDisplayManager::VirtualDisplayManager(const platform::PlatformAPI& platform,
                                             std::shared_ptr<LiveDisplayProbing> probe, const Clock& clock)
    : VirtualDisplayManager(VirtualDisplayBackend::coreGraphics(platform, std::move(probe)), clock) {}

VirtualDisplayManager::VirtualDisplayManager(VirtualDisplayBackend backend, const Clock& clock)
    : VirtualDisplayManager(std::move(backend.outcome), std::move(backend.maker), std::move(backend.probe),
                            clock) {}

VirtualDisplayManager::VirtualDisplayManager(VirtualDisplayGateOutcome outcome,
                                             std::unique_ptr<NativeVirtualDisplayMaking> builder,
                                             std::shared_ptr<LiveDisplayProbing> probe, const Clock& clock)
    : availability_(VirtualDisplayAvailabilityGate::availability(outcome)),
      outcome_(std::move(outcome)),
      builder_(std::move(builder)),
      probe_(std::move(probe)),
      clock_(clock) {
    if (const auto* usable = std::get_if<VirtualDisplayGateOutcome::Usable>(&outcome_.value);
        usable != nullptr && usable->beyondKnownGood) {
        Log::virtualDisplay().error(
            "macOS is newer than the newest release this interface was validated on; proceeding anyway");
    }
}

VirtualDisplayManager::~VirtualDisplayManager() = default;

std::expected<VirtualDisplayHandle, VirtualDisplayError> VirtualDisplayManager::create(
    const VirtualDisplaySpec& spec, const StopToken& stop) {
    ActorLock lock{actor_};
    if (const auto* blocked = outcome_.asBlocked()) {
        return std::unexpected{blocked->error};
    }
    if (auto valid = VirtualDisplayGeometry::validate(spec); !valid) {
        return std::unexpected{std::move(valid.error())};
    }
    auto rung = climbLadder(spec);
    if (!rung) {
        return std::unexpected{std::move(rung.error())};
    }
    // Every early return below drops the new display, which takes it off the screen again.
    const std::uint32_t displayID = rung->display->displayID();
    if (displayID == 0) {
        return std::unexpected{
            VirtualDisplayError::creationFailed("the display interface assigned no display ID")};
    }
    if (auto verified = verifyPresence(displayID, lock, stop); !verified) {
        return std::unexpected{std::move(verified.error())};
    }
    if (auto verified = verifyUnmirrored(displayID, lock, stop); !verified) {
        return std::unexpected{std::move(verified.error())};
    }
    if (auto verified = verifyMode(displayID, spec, lock, stop); !verified) {
        return std::unexpected{std::move(verified.error())};
    }
    retained_.insert_or_assign(displayID, std::move(rung->display));
    Log::virtualDisplay().info(fmt::format("created virtual display {} at {}x{}, {} PPI accepted", displayID,
                                           spec.pixelWidth, spec.pixelHeight,
                                           VirtualDisplayGeometry::wholePPI(rung->ppi)));
    return VirtualDisplayHandle{.spec = spec, .displayID = displayID, .acceptedPPI = rung->ppi};
}

std::expected<VirtualDisplayManager::Rung, VirtualDisplayError> VirtualDisplayManager::climbLadder(
    const VirtualDisplaySpec& spec) const {
    if (!builder_) {
        return std::unexpected{VirtualDisplayError::apiUnavailable(
            "The interface used to create virtual displays is not available.")};
    }
    const std::vector<double> ladder = VirtualDisplayGeometry::ppiLadder(spec);
    std::optional<VirtualDisplayError> lastError;
    for (const double ppi : ladder) {
        // The maker wraps each attempt in an autorelease pool of its own, so the temporary objects
        // of a refused rung are gone before the next one is tried.
        auto display = builder_->makeIdentifiedDisplay(VirtualDisplayRecipe::make(spec, ppi), spec.id);
        if (display) {
            return Rung{.display = std::move(*display), .ppi = ppi};
        }
        Log::virtualDisplay().log(fmt::format("descriptor refused at {} PPI; dropping a rung",
                                              VirtualDisplayGeometry::wholePPI(ppi)));
        lastError = std::move(display.error());
    }
    if (!lastError) {
        return std::unexpected{VirtualDisplayError::creationFailed("no target density to try")};
    }
    return std::unexpected{std::move(*lastError)};
}

void VirtualDisplayManager::release(const VirtualDisplayHandle& handle, const StopToken&) {
    const ActorLock lock{actor_};
    if (retained_.erase(handle.displayID) > 0) {
        Log::virtualDisplay().info(fmt::format("released virtual display {}", handle.displayID));
    }
}

std::int64_t VirtualDisplayManager::releaseOrphans(const StopToken& stop) {
    ActorLock lock{actor_};
    std::vector<std::uint32_t> orphans = taggedDisplayIDs(virtualDisplayVendorID);
    const auto isTagged = [&orphans](std::uint32_t displayID) {
        return std::ranges::find(orphans, displayID) != orphans.end();
    };
    // A retained display that is no longer listed is gone already; its entry is stale.
    const auto stale = static_cast<std::int64_t>(
        std::erase_if(retained_, [&](const auto& entry) { return !isTagged(entry.first); }));
    std::erase_if(orphans, [this](std::uint32_t displayID) { return retained_.contains(displayID); });
    if (orphans.empty()) {
        return stale;
    }
    const auto found = static_cast<std::int64_t>(orphans.size());
    Log::virtualDisplay().log(fmt::format("found {} virtual display(s) without a live owner", found));

    // The window server removes a dead process's displays by itself; wait, bounded, for it to.
    const Clock::Instant deadline = clock_.now() + settleTimeout_;
    while (clock_.now() < deadline && !stop.stopRequested()) {
        pause(lock, stop);
        const std::vector<std::uint32_t> tagged = taggedDisplayIDs(virtualDisplayVendorID);
        std::erase_if(orphans, [&tagged](std::uint32_t displayID) {
            return std::ranges::find(tagged, displayID) == tagged.end();
        });
        if (orphans.empty()) {
            break;
        }
    }
    const auto remaining = static_cast<std::int64_t>(orphans.size());
    if (remaining > 0) {
        Log::virtualDisplay().error(fmt::format("{} orphaned display(s) outlived the wait", remaining));
    }
    return stale + found - remaining;
}

void VirtualDisplayManager::pause(ActorLock& lock, const StopToken& stop) const {
    lock.unlock();
    clock_.sleepFor(pollInterval_, stop);
    lock.lock();
}

std::optional<LiveDisplaySnapshot> VirtualDisplayManager::snapshot(std::uint32_t displayID) const {
    for (const LiveDisplaySnapshot& display : probe_->activeDisplays()) {
        if (display.displayID == displayID) {
            return display;
        }
    }
    return std::nullopt;
}

std::vector<std::uint32_t> VirtualDisplayManager::taggedDisplayIDs(std::uint32_t vendorID) const {
    std::vector<std::uint32_t> tagged;
    for (const LiveDisplaySnapshot& display : probe_->activeDisplays()) {
        if (display.vendorNumber == vendorID) {
            tagged.push_back(display.displayID);
        }
    }
    return tagged;
}

}  // namespace screenweaver
