// Applying a layout plan: wait for a settled topology, predict and validate the whole resulting
// arrangement, then stage everything in one configuration transaction that is completed or
// cancelled as a whole.

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>

#include "CoreTypes/Log.hpp"
#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/ArrangementPlanner.hpp"
#include "DisplayKit/DisplayProvider.hpp"
#include "DisplayKit/DisplaySettleWaiter.hpp"
#include "DisplayKit/LayoutValidator.hpp"

namespace screenweaver {

using platform::PlatformAPI;

namespace {

std::string cgErrorSuffix(CGError error) {
    return " failed (CGError " + std::to_string(static_cast<std::int32_t>(error)) + ")";
}

std::string describeMode(const DisplayModeInfo& mode) {
    return "DisplayModeInfo(pixelWidth: " + std::to_string(mode.pixelWidth) +
           ", pixelHeight: " + std::to_string(mode.pixelHeight) +
           ", pointWidth: " + std::to_string(mode.pointWidth) +
           ", pointHeight: " + std::to_string(mode.pointHeight) +
           ", refreshRate: " + text::describe(mode.refreshRate) + ")";
}

// The window server takes origins as signed 32-bit integers, rounded half away from zero.
std::optional<std::int32_t> displayCoordinate(double value) {
    if (!std::isfinite(value)) {
        return std::nullopt;
    }
    const double rounded = std::round(value);
    if (rounded < static_cast<double>(std::numeric_limits<std::int32_t>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<std::int32_t>::max())) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

bool sameMode(const platform::CoreGraphicsAPI& coreGraphics, CGDisplayModeRef candidate,
              const DisplayModeInfo& wanted) {
    return static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetPixelWidth(candidate)) ==
               wanted.pixelWidth &&
           static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetPixelHeight(candidate)) ==
               wanted.pixelHeight &&
           static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetWidth(candidate)) == wanted.pointWidth &&
           static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetHeight(candidate)) == wanted.pointHeight &&
           coreGraphics.CGDisplayModeGetRefreshRate(candidate) == wanted.refreshRate;
}

}  // namespace

std::expected<void, DisplayError> DisplayProvider::apply(const LayoutPlan& plan, const StopToken& stop) {
    const auto topology = settledTopology(plan, stop);
    if (!topology) {
        return std::unexpected{topology.error()};
    }
    const auto frames = ArrangementPlanner::plannedFrames(
        plan, *topology, [this](std::uint32_t displayID) { return ref(platform_, displayID); });
    if (!frames) {
        return std::unexpected{frames.error()};
    }
    if (auto verdict = LayoutValidator::validate(*frames); !verdict) {
        Log::display().error("Rejected layout plan: " + verdict.error().description());
        return verdict;
    }
    if (auto committed = commit(platform_, plan); !committed) {
        return committed;
    }
    Log::display().log("Committed arrangement: " + std::to_string(plan.placements.size()) + " placements, " +
                       std::to_string(plan.modeChanges.size()) + " mode changes, " +
                       std::to_string(plan.unmirror.size()) + " un-mirrored");
    return {};
}

std::expected<DisplayTopology, DisplayError> DisplayProvider::settledTopology(const LayoutPlan& plan,
                                                                              const StopToken& stop) const {
    const auto required = ArrangementPlanner::referencedDisplayIDs(plan);
    DisplaySettleWaiter waiter{debouncer_.broadcaster().stream(),
                               [this]() -> std::optional<DisplayTopology> {
                                   // A snapshot taken during a burst may show a half-done change.
                                   if (debouncer_.burstInFlight()) {
                                       return std::nullopt;
                                   }
                                   auto topology = takeSnapshot(platform_);
                                   return topology ? std::optional{std::move(*topology)} : std::nullopt;
                               },
                               settleTimeout_, clock_};
    auto settled = waiter.firstSettledTopology(
        [&required](const DisplayTopology& topology) {
            std::unordered_set<std::uint32_t> online;
            for (const auto& display : topology.displays) {
                online.insert(display.displayID);
            }
            return std::ranges::all_of(required, [&online](std::uint32_t id) { return online.contains(id); });
        },
        stop);
    if (settled) {
        return std::move(*settled);
    }
    Log::display().error("Displays did not settle before the timeout; using a live snapshot");
    return takeSnapshot(platform_);
}

std::expected<void, DisplayError> DisplayProvider::commit(const PlatformAPI& platform,
                                                          const LayoutPlan& plan) {
    if (platform.coreGraphics == nullptr) {
        return std::unexpected{DisplayError::configurationFailed("CGBeginDisplayConfiguration failed")};
    }
    const auto& coreGraphics = *platform.coreGraphics;
    CGDisplayConfigRef config = nullptr;
    if (coreGraphics.CGBeginDisplayConfiguration(&config) != kCGErrorSuccess || config == nullptr) {
        return std::unexpected{DisplayError::configurationFailed("CGBeginDisplayConfiguration failed")};
    }
    // The order is fixed: every un-mirroring, then every mode change, then every origin.
    auto staged = stageUnmirroring(platform, plan.unmirror, config);
    if (staged) {
        staged = stageModeChanges(platform, plan.modeChanges, config);
    }
    if (staged) {
        staged = stagePlacements(platform, plan.placements, config);
    }
    if (!staged) {
        coreGraphics.CGCancelDisplayConfiguration(config);
        return staged;
    }
    if (const CGError error = coreGraphics.CGCompleteDisplayConfiguration(config, kCGConfigurePermanently);
        error != kCGErrorSuccess) {
        coreGraphics.CGCancelDisplayConfiguration(config);
        return std::unexpected{
            DisplayError::configurationFailed("CGCompleteDisplayConfiguration" + cgErrorSuffix(error))};
    }
    return {};
}

std::expected<void, DisplayError> DisplayProvider::stageUnmirroring(
    const PlatformAPI& platform, const std::vector<std::uint32_t>& displayIDs, CGDisplayConfigRef config) {
    for (const std::uint32_t id : displayIDs) {
        // Mirroring the null display means mirroring nothing.
        if (const CGError error =
                platform.coreGraphics->CGConfigureDisplayMirrorOfDisplay(config, id, CGDirectDisplayID{0});
            error != kCGErrorSuccess) {
            return std::unexpected{DisplayError::configurationFailed(
                "un-mirror of display " + std::to_string(id) + cgErrorSuffix(error))};
        }
    }
    return {};
}

std::expected<void, DisplayError> DisplayProvider::stageModeChanges(const PlatformAPI& platform,
                                                                    const std::vector<ModeChange>& changes,
                                                                    CGDisplayConfigRef config) {
    const auto& coreGraphics = *platform.coreGraphics;
    for (const auto& change : changes) {
        // The full list as CoreGraphics gives it, unsorted, so the first match is CoreGraphics' own.
        const auto raw = rawModes(platform, change.displayID);
        if (!raw) {
            return std::unexpected{raw.error()};
        }
        const auto match = std::ranges::find_if(
            raw->modes, [&](CGDisplayModeRef mode) { return sameMode(coreGraphics, mode, change.mode); });
        if (match == raw->modes.end()) {
            return std::unexpected{
                DisplayError::configurationFailed("no mode matching " + describeMode(change.mode) +
                                                  " on display " + std::to_string(change.displayID))};
        }
        if (const CGError error =
                coreGraphics.CGConfigureDisplayWithDisplayMode(config, change.displayID, *match, nullptr);
            error != kCGErrorSuccess) {
            return std::unexpected{DisplayError::configurationFailed(
                "mode change of display " + std::to_string(change.displayID) + cgErrorSuffix(error))};
        }
    }
    return {};
}

std::expected<void, DisplayError> DisplayProvider::stagePlacements(
    const PlatformAPI& platform, const std::vector<DisplayPlacement>& placements, CGDisplayConfigRef config) {
    for (const auto& placement : placements) {
        const auto x = displayCoordinate(placement.origin.x);
        const auto y = displayCoordinate(placement.origin.y);
        if (!x || !y) {
            return std::unexpected{DisplayError::configurationFailed(
                "origin (" + text::describe(placement.origin.x) + ", " + text::describe(placement.origin.y) +
                ") of display " + std::to_string(placement.displayID) +
                " is not expressible in display coordinates")};
        }
        if (const CGError error =
                platform.coreGraphics->CGConfigureDisplayOrigin(config, placement.displayID, *x, *y);
            error != kCGErrorSuccess) {
            return std::unexpected{DisplayError::configurationFailed(
                "origin change of display " + std::to_string(placement.displayID) + cgErrorSuffix(error))};
        }
    }
    return {};
}

}  // namespace screenweaver
