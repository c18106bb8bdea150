#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"

#include "VirtualDisplayKit/PrivateAPI/NativeDisplayBuilder.hpp"
#include "VirtualDisplayKit/PrivateAPI/PrivateAPIResolver.hpp"
#include "VirtualDisplayKit/VirtualDisplayAvailabilityGate.hpp"

namespace screenweaver {

VirtualDisplayBackend VirtualDisplayBackend::coreGraphics(const platform::PlatformAPI& platform,
                                                          std::shared_ptr<LiveDisplayProbing> probe) {
    const std::optional<ResolvedPrivateAPI> resolved = PrivateAPIResolver::resolve(platform.objcRuntime);
    // Without a macOS version (any other system) there is no version to hold against the interface:
    // the version rule passes and the interface's absence decides.
    const int osVersion =
        platform.process.macOSMajorVersion.value_or(VirtualDisplayAvailabilityGate::minimumMajorVersion);
    VirtualDisplayBackend backend{
        .outcome = VirtualDisplayAvailabilityGate::evaluate(resolved.has_value(), osVersion),
        .maker = nullptr,
        .probe = std::move(probe),
    };
    // The builder also needs CoreFoundation (the name and the mode list) and the user-initiated
    // global queue; the system has all of them wherever it has the classes.
    if (resolved && platform.coreFoundation != nullptr) {
        const dispatch_queue_t queue =
            platform.dispatch != nullptr
                ? platform.dispatch->dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)
                : nullptr;
        backend.maker = std::make_unique<NativeDisplayBuilder>(*platform.objcRuntime,
                                                               *platform.coreFoundation, *resolved, queue);
    }
    return backend;
}

}  // namespace screenweaver
