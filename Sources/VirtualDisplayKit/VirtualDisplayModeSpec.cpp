#include "VirtualDisplayKit/VirtualDisplayModeSpec.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::VirtualDisplayModeSpec>::operator()(
    const screenweaver::VirtualDisplayModeSpec& mode) const noexcept {
    return screenweaver::hashFields(mode.width, mode.height, mode.refreshRate);
}
