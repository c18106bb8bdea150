#include "CoreTypes/Model/LiveDisplay.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::LiveDisplay>::operator()(
    const screenweaver::LiveDisplay& display) const noexcept {
    return screenweaver::hashFields(display.displayID, display.ref, display.name, display.vendorNumber,
                                    display.modelNumber, display.serialNumber, display.isBuiltin,
                                    display.isMain, display.isAsleep, display.bounds, display.currentMode);
}
