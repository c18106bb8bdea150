#include "CoreTypes/Model/DisplayPlacement.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::DisplayPlacement>::operator()(
    const screenweaver::DisplayPlacement& placement) const noexcept {
    return screenweaver::hashFields(placement.displayID, placement.origin);
}
