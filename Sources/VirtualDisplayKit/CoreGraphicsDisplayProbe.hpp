#pragma once

#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"

namespace screenweaver {

/// The live display probe on the public CoreGraphics display functions. Stateless apart from the
/// borrowed tables; without them (any system but macOS) there are no displays and nothing can be
/// corrected.
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
    const platform::CoreGraphicsAPI* coreGraphics_;
    const platform::CoreFoundationAPI* coreFoundation_;
};

}  // namespace screenweaver
