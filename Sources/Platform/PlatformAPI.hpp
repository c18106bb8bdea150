#pragma once

#include "Platform/ColorSyncAPI.hpp"
#include "Platform/CoreFoundationAPI.hpp"
#include "Platform/CoreGraphicsAPI.hpp"
#include "Platform/DispatchAPI.hpp"
#include "Platform/ObjCRuntimeAPI.hpp"
#include "Platform/ProcessFacts.hpp"

namespace screenweaver::platform {

namespace x11 {
struct XCBRandRAPI;
}

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
    /// The X Window System's client library, where the system has the X backend (Linux). Holding
    /// the table opens no connection: a server is connected to only where displays are asked for.
    const x11::XCBRandRAPI* x11 = nullptr;
    ProcessFacts process;

    /// The running system's functions on macOS. Elsewhere the macOS tables are null, the X
    /// backend's table is there, the macOS version is absent and the user ID is the process's.
    [[nodiscard]] static PlatformAPI system();
};

}  // namespace screenweaver::platform
