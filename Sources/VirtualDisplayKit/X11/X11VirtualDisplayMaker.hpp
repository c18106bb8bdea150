#pragma once

#include <memory>

#include "Platform/X11/X11Connection.hpp"
#include "VirtualDisplayKit/NativeVirtualDisplayMaking.hpp"

namespace screenweaver {

/// Makes virtual displays on an X server: one rung's recipe becomes a RandR monitor without
/// outputs, of the recipe's pixel size and physical size (so the server sees the rung's density),
/// placed right of the rightmost monitor at the top, with the screen grown to hold it. The monitor's
/// name carries the recipe's vendor, product and serial numbers and the VirtualDisplaySpec's UUID,
/// and names a window of this connection as its owner, so the monitor outlives its process only
/// as an orphan. A display the server will not hold is a refusal (`creationFailed` with the reason),
/// after which the server is as it was.
class X11VirtualDisplayMaker final : public NativeVirtualDisplayMaking {
public:
    /// The connection is shared with the displays made, which need it to remove themselves.
    explicit X11VirtualDisplayMaker(std::shared_ptr<const platform::x11::X11Connection> connection);

    /// A monitor's name must carry its spec's UUID: without one, this refuses.
    [[nodiscard]] std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> makeDisplay(
        const VirtualDisplayRecipe& recipe) const override;

    [[nodiscard]] std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> makeIdentifiedDisplay(
        const VirtualDisplayRecipe& recipe, const UUID& specID) const override;

private:
    std::shared_ptr<const platform::x11::X11Connection> connection_;
};

}  // namespace screenweaver
