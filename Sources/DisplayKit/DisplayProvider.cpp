#include "DisplayKit/DisplayProvider.hpp"

#include <algorithm>
#include <string>

#include "CoreTypes/Log.hpp"
#include "DisplayKit/ModeList.hpp"
#include "Platform/CFStrings.hpp"

namespace screenweaver {

using platform::CFRef;
using platform::PlatformAPI;

namespace {

DisplayModeInfo modeInfo(const platform::CoreGraphicsAPI& coreGraphics, CGDisplayModeRef mode) {
    return {static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetPixelWidth(mode)),
            static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetPixelHeight(mode)),
            static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetWidth(mode)),
            static_cast<std::int64_t>(coreGraphics.CGDisplayModeGetHeight(mode)),
            coreGraphics.CGDisplayModeGetRefreshRate(mode)};
}

std::optional<DisplayModeInfo> currentMode(const platform::CoreGraphicsAPI& coreGraphics,
                                           std::uint32_t displayID) {
    const CGDisplayModeRef mode = coreGraphics.CGDisplayCopyDisplayMode(displayID);
    if (mode == nullptr) {
        return std::nullopt;
    }
    const DisplayModeInfo info = modeInfo(coreGraphics, mode);
    coreGraphics.CGDisplayModeRelease(mode);
    return info;
}

std::optional<std::string> colorSyncUUID(const PlatformAPI& platform, std::uint32_t displayID) {
    if (platform.colorSync == nullptr || platform.coreFoundation == nullptr) {
        return std::nullopt;
    }
    const auto& coreFoundation = *platform.coreFoundation;
    const auto uuid = CFRef<CFUUIDRef>::adopt(
        coreFoundation, platform.colorSync->CGDisplayCreateUUIDFromDisplayID(displayID));
    if (!uuid) {
        return std::nullopt;
    }
    const auto text = CFRef<CFStringRef>::adopt(
        coreFoundation, coreFoundation.CFUUIDCreateString(coreFoundation.kCFAllocatorDefault, uuid.get()));
    return platform::utf8String(coreFoundation, text.get());
}

}  // namespace

DisplayProvider::DisplayProvider(Clock::Duration changeDebounceInterval, Clock::Duration settleTimeout,
                                 PlatformAPI platform, const Clock& clock)
    : platform_(platform),
      clock_(clock),
      // The snapshot source holds the tables, never the provider.
      debouncer_(
          changeDebounceInterval,
          [platform]() -> std::optional<DisplayTopology> {
              auto topology = takeSnapshot(platform);
              return topology ? std::optional{std::move(*topology)} : std::nullopt;
          },
          clock),
      settleTimeout_(settleTimeout) {
    if (platform_.coreGraphics != nullptr) {
        callbackRegistered_ = platform_.coreGraphics->CGDisplayRegisterReconfigurationCallback(
                                  &DisplayProvider::reconfigurationCallback, this) == kCGErrorSuccess;
    }
}

DisplayProvider::~DisplayProvider() {
    if (callbackRegistered_) {
        // Once removal returns, no delivery is running and none will; the debouncer can go.
        platform_.coreGraphics->CGDisplayRemoveReconfigurationCallback(
            &DisplayProvider::reconfigurationCallback, this);
    }
}

void DisplayProvider::reconfigurationCallback(CGDirectDisplayID /*display*/,
                                              CGDisplayChangeSummaryFlags /*flags*/, void* userInfo) {
    if (userInfo == nullptr) {
        return;
    }
    static_cast<DisplayProvider*>(userInfo)->debouncer_.signal();
}

std::expected<DisplayTopology, DisplayError> DisplayProvider::snapshot() const {
    return takeSnapshot(platform_);
}

AsyncStream<DisplayTopology> DisplayProvider::changes() const {
    return debouncer_.broadcaster().stream();
}

std::expected<std::vector<std::uint32_t>, DisplayError> DisplayProvider::activeDisplayIDs(
    const PlatformAPI& platform) {
    if (platform.coreGraphics == nullptr) {
        return std::unexpected{DisplayError::enumerationFailed()};
    }
    const auto& coreGraphics = *platform.coreGraphics;
    // Count first, then fill a list of exactly that size: there is no fixed upper limit.
    std::uint32_t count = 0;
    if (coreGraphics.CGGetActiveDisplayList(0, nullptr, &count) != kCGErrorSuccess) {
        return std::unexpected{DisplayError::enumerationFailed()};
    }
    if (count == 0) {
        return std::vector<std::uint32_t>{};
    }
    std::vector<std::uint32_t> ids(count, 0);
    std::uint32_t filled = 0;
    if (coreGraphics.CGGetActiveDisplayList(count, ids.data(), &filled) != kCGErrorSuccess) {
        return std::unexpected{DisplayError::enumerationFailed()};
    }
    ids.resize(std::min(filled, count));
    return ids;
}

std::expected<DisplayTopology, DisplayError> DisplayProvider::takeSnapshot(const PlatformAPI& platform) {
    const auto ids = activeDisplayIDs(platform);
    if (!ids) {
        return std::unexpected{ids.error()};
    }
    const auto& coreGraphics = *platform.coreGraphics;
    DisplayTopology topology;
    topology.displays.reserve(ids->size());
    for (const std::uint32_t id : *ids) {
        const CGRect bounds = coreGraphics.CGDisplayBounds(id);
        topology.displays.push_back(LiveDisplay{
            .displayID = id,
            .ref = ref(platform, id),
            .name = std::nullopt,
            .vendorNumber = coreGraphics.CGDisplayVendorNumber(id),
            .modelNumber = coreGraphics.CGDisplayModelNumber(id),
            .serialNumber = coreGraphics.CGDisplaySerialNumber(id),
            .isBuiltin = coreGraphics.CGDisplayIsBuiltin(id) != 0,
            .isMain = coreGraphics.CGDisplayIsMain(id) != 0,
            .isAsleep = coreGraphics.CGDisplayIsAsleep(id) != 0,
            .bounds = Rect{{bounds.origin.x, bounds.origin.y}, {bounds.size.width, bounds.size.height}},
            .currentMode = currentMode(coreGraphics, id),
        });
    }
    return topology;
}

DisplayRef DisplayProvider::ref(const PlatformAPI& platform, std::uint32_t displayID) {
    if (auto uuid = colorSyncUUID(platform, displayID)) {
        return DisplayRef::physical(std::move(*uuid));
    }
    // Without the CoreGraphics table the numbers cannot be read and count as 0.
    std::string fallback = "0-0-0";
    if (const auto* const coreGraphics = platform.coreGraphics) {
        fallback = std::to_string(coreGraphics->CGDisplayVendorNumber(displayID)) + "-" +
                   std::to_string(coreGraphics->CGDisplayModelNumber(displayID)) + "-" +
                   std::to_string(coreGraphics->CGDisplaySerialNumber(displayID));
    }
    Log::display().error("No ColorSync UUID for display " + std::to_string(displayID) + "; using " +
                         fallback);
    return DisplayRef::physical(fallback);
}

std::expected<DisplayProvider::RawModes, DisplayError> DisplayProvider::rawModes(const PlatformAPI& platform,
                                                                                 std::uint32_t displayID) {
    if (platform.coreGraphics == nullptr || platform.coreFoundation == nullptr) {
        return std::unexpected{DisplayError::modeListUnavailable(displayID)};
    }
    const auto& coreGraphics = *platform.coreGraphics;
    const auto& coreFoundation = *platform.coreFoundation;
    // Asks for the low-resolution (1x) duplicates of scaled modes too.
    const void* keys[] = {coreGraphics.kCGDisplayShowDuplicateLowResolutionModes};
    const void* values[] = {coreFoundation.kCFBooleanTrue};
    const auto options = CFRef<CFDictionaryRef>::adopt(
        coreFoundation, coreFoundation.CFDictionaryCreate(coreFoundation.kCFAllocatorDefault, keys, values, 1,
                                                          coreFoundation.kCFTypeDictionaryKeyCallBacks,
                                                          coreFoundation.kCFTypeDictionaryValueCallBacks));
    RawModes raw{CFRef<CFArrayRef>::adopt(
                     coreFoundation, coreGraphics.CGDisplayCopyAllDisplayModes(displayID, options.get())),
                 {}};
    if (!raw.array || coreFoundation.CFGetTypeID(raw.array.get()) != coreFoundation.CFArrayGetTypeID()) {
        return std::unexpected{DisplayError::modeListUnavailable(displayID)};
    }
    const CFIndex count = coreFoundation.CFArrayGetCount(raw.array.get());
    if (count <= 0) {
        return std::unexpected{DisplayError::modeListUnavailable(displayID)};
    }
    const CFTypeID modeType = coreGraphics.CGDisplayModeGetTypeID();
    raw.modes.reserve(static_cast<std::size_t>(count));
    for (CFIndex index = 0; index < count; ++index) {
        const void* const element = coreFoundation.CFArrayGetValueAtIndex(raw.array.get(), index);
        if (coreFoundation.CFGetTypeID(element) != modeType) {
            return std::unexpected{DisplayError::modeListUnavailable(displayID)};
        }
        // CoreGraphics declares its mode references without const; the array only lends them.
        raw.modes.push_back(static_cast<CGDisplayModeRef>(const_cast<void*>(element)));
    }
    return raw;
}

std::expected<std::vector<DisplayModeInfo>, DisplayError> DisplayProvider::availableModes(
    std::uint32_t displayID) const {
    const auto raw = rawModes(platform_, displayID);
    if (!raw) {
        return std::unexpected{raw.error()};
    }
    std::vector<DisplayModeInfo> modes;
    modes.reserve(raw->modes.size());
    for (const CGDisplayModeRef mode : raw->modes) {
        modes.push_back(modeInfo(*platform_.coreGraphics, mode));
    }
    return ModeList::normalized(modes);
}

}  // namespace screenweaver
