#include "CoreTypes/Model/ModeChange.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::ModeChange>::operator()(
    const screenweaver::ModeChange& change) const noexcept {
    return screenweaver::hashFields(change.displayID, change.mode);
}
