#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// The libdispatch function that hands out the global concurrent queues.
struct DispatchAPI {
    // `identifier` is a quality-of-service class such as QOS_CLASS_USER_INITIATED; `flags` must be 0.
    // clang gives the system's function a noexcept type (it is declared nothrow); it converts to this.
    dispatch_queue_global_t (*dispatch_get_global_queue)(intptr_t identifier, uintptr_t flags);
};

}  // namespace screenweaver::platform
