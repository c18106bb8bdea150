#include "CoreTypes/Model/VirtualDisplaySpec.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::VirtualDisplaySpec>::operator()(
    const screenweaver::VirtualDisplaySpec& spec) const noexcept {
    return screenweaver::hashFields(spec.id, spec.name, spec.catalogEntryID, spec.pixelWidth,
                                    spec.pixelHeight, spec.refreshRate, spec.hiDPI, spec.rotation,
                                    screenweaver::rawValue(spec.dynamicRange), spec.targetPPIOverride);
}
