// Applying a layout plan: wait for a settled topology, predict and validate the whole resulting
// arrangement, then stage everything in one configuration transaction that is completed or
// cancelled as a whole.

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/DisplayProvider.hpp"
#include "DisplayKit/PlanApplication.hpp"

namespace screenweaver {

using platform::PlatformAPI;

namespace {

std::string cgErrorSuffix(CGError error) {
    return " failed (CGError " + std::to_string(static_cast<std::int32_t>(error)) + ")";
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
    const auto frames = PlanApplication::validatedFrames(
        plan, *topology, [this](std::uint32_t displayID) { return ref(platform_, displayID); });
    if (!frames) {
        return std::unexpected{frames.error()};
    }
    if (auto committed = commit(platform_, plan); !committed) {
        return committed;
    }
    PlanApplication::logCommitted(plan);
    return {};
}

std::expected<DisplayTopology, DisplayError> DisplayProvider::settledTopology(const LayoutPlan& plan,
                                                                              const StopToken& stop) const {
    return PlanApplication::settledTopology(
        plan, debouncer_, settleTimeout_, clock_, [this] { return takeSnapshot(platform_); }, stop);
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
                DisplayError::configurationFailed(PlanApplication::noModeMatching(change))};
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
