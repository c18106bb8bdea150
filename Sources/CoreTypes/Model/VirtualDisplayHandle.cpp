#include "CoreTypes/Model/VirtualDisplayHandle.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::VirtualDisplayHandle>::operator()(
    const screenweaver::VirtualDisplayHandle& handle) const noexcept {
    return screenweaver::hashFields(handle.spec, handle.displayID, handle.acceptedPPI);
}
