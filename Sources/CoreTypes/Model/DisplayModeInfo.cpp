#include "CoreTypes/Model/DisplayModeInfo.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::DisplayModeInfo>::operator()(
    const screenweaver::DisplayModeInfo& mode) const noexcept {
    return screenweaver::hashFields(mode.pixelWidth, mode.pixelHeight, mode.pointWidth, mode.pointHeight,
                                    mode.refreshRate);
}
