#pragma once

#include <memory>

#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"
#include "VirtualDisplayKit/NativeVirtualDisplayMaking.hpp"
#include "VirtualDisplayKit/VirtualDisplayGateOutcome.hpp"

namespace screenweaver {

/// What a machine makes and observes virtual displays with: the verdict on whether they may be
/// made, the maker (absent where nothing can make them) and the probe.
struct VirtualDisplayBackend {
    VirtualDisplayGateOutcome outcome;
    std::unique_ptr<NativeVirtualDisplayMaking> maker;
    std::shared_ptr<LiveDisplayProbing> probe;

    /// The window server's on a Mac: the private classes resolved through `platform` and gated by
    /// the macOS version, made into displays by the native builder (with the user-initiated global
    /// queue) and observed through `probe`. Without the Objective-C runtime (any other system) it
    /// is blocked with the "does not expose" sentence. The platform's tables must outlive it.
    [[nodiscard]] static VirtualDisplayBackend coreGraphics(const platform::PlatformAPI& platform,
                                                            std::shared_ptr<LiveDisplayProbing> probe);

    /// This machine's: on a system with the X backend whose session X server (`DISPLAY`) answers and
    /// offers RandR 1.5 or later, monitors on that server, made by `X11VirtualDisplayMaker` and
    /// observed by `X11DisplayProbe` over one connection; otherwise `coreGraphics` with a
    /// `CoreGraphicsDisplayProbe`. Only this opens a connection to a display server.
    [[nodiscard]] static VirtualDisplayBackend system(const platform::PlatformAPI& platform);
};

}  // namespace screenweaver
