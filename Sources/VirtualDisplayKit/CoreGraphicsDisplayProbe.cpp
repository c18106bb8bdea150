#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"

#include <algorithm>

#include "Platform/CFRef.hpp"

namespace screenweaver {
namespace {

constexpr std::uint32_t maximumDisplays = 64;

bool hasPixelCount(std::size_t actual, std::int64_t wanted) {
    return wanted >= 0 && actual == static_cast<std::size_t>(wanted);
}

}  // namespace

CoreGraphicsDisplayProbe::CoreGraphicsDisplayProbe(const platform::PlatformAPI& platform)
    : coreGraphics_(platform.coreGraphics), coreFoundation_(platform.coreFoundation) {}

std::vector<LiveDisplaySnapshot> CoreGraphicsDisplayProbe::activeDisplays() {
    if (coreGraphics_ == nullptr) {
        return {};
    }
    const platform::CoreGraphicsAPI& cg = *coreGraphics_;
    std::uint32_t count = 0;
    if (cg.CGGetActiveDisplayList(maximumDisplays, nullptr, &count) != kCGErrorSuccess || count == 0) {
        return {};
    }
    std::vector<CGDirectDisplayID> displayIDs(count, 0);
    std::uint32_t listed = 0;
    if (cg.CGGetActiveDisplayList(count, displayIDs.data(), &listed) != kCGErrorSuccess) {
        return {};
    }
    std::vector<LiveDisplaySnapshot> snapshots;
    snapshots.reserve(std::min(count, listed));
    for (std::uint32_t index = 0; index < std::min(count, listed); ++index) {
        const CGDirectDisplayID displayID = displayIDs[index];
        const CGDirectDisplayID mirrored = cg.CGDisplayMirrorsDisplay(displayID);
        const auto [pixelWidth, pixelHeight] = currentPixelSize(displayID);
        snapshots.push_back({
            .displayID = displayID,
            .vendorNumber = cg.CGDisplayVendorNumber(displayID),
            .serialNumber = cg.CGDisplaySerialNumber(displayID),
            .mirrorSource = mirrored == kCGNullDirectDisplay ? std::nullopt : std::optional{mirrored},
            .pixelWidth = pixelWidth,
            .pixelHeight = pixelHeight,
        });
    }
    return snapshots;
}

std::pair<std::int64_t, std::int64_t> CoreGraphicsDisplayProbe::currentPixelSize(
    CGDirectDisplayID displayID) const {
    const platform::CoreGraphicsAPI& cg = *coreGraphics_;
    const CGDisplayModeRef mode = cg.CGDisplayCopyDisplayMode(displayID);
    if (mode == nullptr) {
        return {0, 0};
    }
    const auto size = std::pair{static_cast<std::int64_t>(cg.CGDisplayModeGetPixelWidth(mode)),
                                static_cast<std::int64_t>(cg.CGDisplayModeGetPixelHeight(mode))};
    cg.CGDisplayModeRelease(mode);
    return size;
}

bool CoreGraphicsDisplayProbe::breakMirroring(std::uint32_t displayID) {
    if (coreGraphics_ == nullptr) {
        return false;
    }
    const platform::CoreGraphicsAPI& cg = *coreGraphics_;
    CGDisplayConfigRef configuration = nullptr;
    if (cg.CGBeginDisplayConfiguration(&configuration) != kCGErrorSuccess || configuration == nullptr) {
        return false;
    }
    if (cg.CGConfigureDisplayMirrorOfDisplay(configuration, displayID, kCGNullDirectDisplay) !=
        kCGErrorSuccess) {
        cg.CGCancelDisplayConfiguration(configuration);
        return false;
    }
    return cg.CGCompleteDisplayConfiguration(configuration, kCGConfigureForSession) == kCGErrorSuccess;
}

bool CoreGraphicsDisplayProbe::selectMode(std::uint32_t displayID, std::int64_t pixelWidth,
                                          std::int64_t pixelHeight) {
    if (coreGraphics_ == nullptr || coreFoundation_ == nullptr) {
        return false;
    }
    const platform::CoreGraphicsAPI& cg = *coreGraphics_;
    const auto modes = platform::CFRef<CFArrayRef>::adopt(
        *coreFoundation_, cg.CGDisplayCopyAllDisplayModes(displayID, nullptr));
    if (!modes) {
        return false;
    }
    const CFIndex count = coreFoundation_->CFArrayGetCount(modes.get());
    for (CFIndex index = 0; index < count; ++index) {
        // Borrowed from the array, which outlives the loop.
        const auto mode = static_cast<CGDisplayModeRef>(
            const_cast<void*>(coreFoundation_->CFArrayGetValueAtIndex(modes.get(), index)));
        if (hasPixelCount(cg.CGDisplayModeGetPixelWidth(mode), pixelWidth) &&
            hasPixelCount(cg.CGDisplayModeGetPixelHeight(mode), pixelHeight)) {
            return cg.CGDisplaySetDisplayMode(displayID, mode, nullptr) == kCGErrorSuccess;
        }
    }
    return false;
}

}  // namespace screenweaver
