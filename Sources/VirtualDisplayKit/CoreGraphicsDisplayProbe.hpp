#pragma once

#include <utility>

#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"

namespace screenweaver {

/// The live display probe on the public CoreGraphics display functions. Stateless apart from the
/// borrowed tables; without them (any system but macOS) there are no displays and nothing can be
/// corrected.
///
/// A display's pixel size is read from its current mode (`CGDisplayModeGetPixelWidth` and
/// `...Height`), never from `CGDisplayPixelsWide` and `CGDisplayPixelsHigh`: despite their names,
/// those answer the mode's size in points, so a HiDPI display of 3840x2160 pixels would read
/// 1920x1080 and never pass the size check of a new display. A display without a current mode is
/// listed at 0x0, which fails that check as a missing display does.
class CoreGraphicsDisplayProbe final : public LiveDisplayProbing {
public:
    /// The tables must outlive the probe.
    explicit CoreGraphicsDisplayProbe(const platform::PlatformAPI& platform);

    /// At most 64 displays, as the first count asks for.
    [[nodiscard]] std::vector<LiveDisplaySnapshot> activeDisplays() override;

    /// Stages "mirrors no display" in a configuration and completes it for the session.
    bool breakMirroring(std::uint32_t displayID) override;

    /// Applies the first listed mode of exactly this pixel size, whatever its rate and scaling.
    bool selectMode(std::uint32_t displayID, std::int64_t pixelWidth, std::int64_t pixelHeight) override;

private:
    /// The current mode's pixel size, (0, 0) without a current mode; the copied mode is released at
    /// once.
    [[nodiscard]] std::pair<std::int64_t, std::int64_t> currentPixelSize(CGDirectDisplayID displayID) const;

    const platform::CoreGraphicsAPI* coreGraphics_;
    const platform::CoreFoundationAPI* coreFoundation_;
};

}  // namespace screenweaver
