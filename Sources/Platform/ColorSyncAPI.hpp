#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// The ColorSync function that names a display by a UUID that outlives its display ID.
struct ColorSyncAPI {
    // Create rule: the caller releases the UUID (CFRelease). NULL when the display has none.
    CFUUIDRef (*CGDisplayCreateUUIDFromDisplayID)(uint32_t displayID);
};

}  // namespace screenweaver::platform
