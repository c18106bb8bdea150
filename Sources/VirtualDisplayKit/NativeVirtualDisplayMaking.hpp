#pragma once

#include <expected>
#include <memory>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/UUID.hpp"
#include "VirtualDisplayKit/RetainedDisplay.hpp"
#include "VirtualDisplayKit/VirtualDisplayRecipe.hpp"

namespace screenweaver {

/// Makes one virtual display from a recipe. The manager holds its maker only through this interface,
/// so tests drive it with a scripted one.
class NativeVirtualDisplayMaking {
public:
    virtual ~NativeVirtualDisplayMaking() = default;

    /// The display, owned by the caller, or why the system would not make it. A refusal is an
    /// ordinary outcome, returned as a value; the display's ID is not checked here.
    [[nodiscard]] virtual std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> makeDisplay(
        const VirtualDisplayRecipe& recipe) const = 0;

    /// The same, for the VirtualDisplaySpec `specID` the recipe was made from. Displays that can
    /// carry their spec's identity take it from here (a monitor on an X server carries it in its
    /// name); for the others this is `makeDisplay`.
    [[nodiscard]] virtual std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError>
    makeIdentifiedDisplay(const VirtualDisplayRecipe& recipe, const UUID& specID) const {
        (void)specID;
        return makeDisplay(recipe);
    }

protected:
    NativeVirtualDisplayMaking() = default;
    NativeVirtualDisplayMaking(const NativeVirtualDisplayMaking&) = default;
    NativeVirtualDisplayMaking& operator=(const NativeVirtualDisplayMaking&) = default;
};

}  // namespace screenweaver
