#include "CoreTypes/Model/DisplayTopology.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::DisplayTopology>::operator()(
    const screenweaver::DisplayTopology& topology) const noexcept {
    return screenweaver::hashFields(topology.displays);
}
