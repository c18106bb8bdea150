#pragma once

#include <cstdint>
#include <expected>
#include <memory>

#include "Platform/ObjCRuntime.hpp"
#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/NativeVirtualDisplayMaking.hpp"
#include "VirtualDisplayKit/PrivateAPI/CGVirtualDisplayInterface.hpp"
#include "VirtualDisplayKit/PrivateAPI/NativeVirtualDisplay.hpp"
#include "VirtualDisplayKit/PrivateAPI/ResolvedPrivateAPI.hpp"

namespace screenweaver {

/// Turns a recipe into a live virtual display through the resolved private classes: a descriptor
/// with the display's identity and size, the display object made from it, and settings with its
/// modes applied to it. Holds no mutable state.
class NativeDisplayBuilder final : public NativeVirtualDisplayMaking {
public:
    /// `runtime` and `coreFoundation` (for the name and the mode list) must outlive the builder and
    /// every display it makes; `queue` is handed to every descriptor.
    NativeDisplayBuilder(const platform::ObjCRuntimeAPI& runtime,
                         const platform::CoreFoundationAPI& coreFoundation, ResolvedPrivateAPI api,
                         dispatch_queue_t queue);

    /// Builds inside an autorelease pool of its own, so the temporary objects are gone on return.
    [[nodiscard]] std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> makeDisplay(
        const VirtualDisplayRecipe& recipe) const override;

    /// A new descriptor holding the recipe's identity and size (+1, the caller's).
    [[nodiscard]] platform::ObjCRef makeDescriptor(const VirtualDisplayRecipe& recipe) const;

    /// New settings holding the recipe's modes, HiDPI flag and rotation (+1, the caller's).
    [[nodiscard]] platform::ObjCRef makeSettings(const VirtualDisplayRecipe& recipe) const;

private:
    [[nodiscard]] std::expected<std::unique_ptr<NativeVirtualDisplay>, VirtualDisplayError> build(
        const VirtualDisplayRecipe& recipe) const;

    /// The serial number under its newer name and the colour space, where the descriptor answers them.
    void applyOptionalProperties(id descriptor, std::uint32_t serialNumber) const;

    [[nodiscard]] platform::ObjCRef makeMode(const VirtualDisplayModeSpec& mode,
                                             bool withTransferFunction) const;

    platform::ObjCRuntime runtime_;
    const platform::CoreFoundationAPI* coreFoundation_;
    ResolvedPrivateAPI api_;
    dispatch_queue_t queue_;
    CGVirtualDisplayInterface::Selectors selectors_;
};

}  // namespace screenweaver
