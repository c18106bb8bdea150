#pragma once

#include "Platform/ColorSyncAPI.hpp"
#include "Platform/CoreFoundationAPI.hpp"
#include "Platform/CoreGraphicsAPI.hpp"
#include "Platform/DispatchAPI.hpp"
#include "Platform/ObjCRuntimeAPI.hpp"
#include "Platform/ProcessFacts.hpp"

namespace screenweaver::platform {

/// Everything of the platform a component may touch, handed to it at construction. The tables are
/// borrowed: they live in static storage (the system's) or in the simulated window server, which
/// outlives the components under test. A null table means the interface does not exist on this
/// system; each component then behaves as it must on a machine without it (no displays, enumeration
/// failures, virtual displays unavailable).
struct PlatformAPI {
    const CoreGraphicsAPI* coreGraphics = nullptr;
    const ColorSyncAPI* colorSync = nullptr;
    const CoreFoundationAPI* coreFoundation = nullptr;
    const ObjCRuntimeAPI* objcRuntime = nullptr;
    const DispatchAPI* dispatch = nullptr;
    ProcessFacts process;

    /// The running system's functions on macOS. Elsewhere every table is null, the macOS version is
    /// absent and the user ID is the process's.
    [[nodiscard]] static PlatformAPI system();
};

}  // namespace screenweaver::platform
