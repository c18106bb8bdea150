#include "VirtualDisplayKit/LiveDisplaySnapshot.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::LiveDisplaySnapshot>::operator()(
    const screenweaver::LiveDisplaySnapshot& snapshot) const noexcept {
    return screenweaver::hashFields(snapshot.displayID, snapshot.vendorNumber, snapshot.serialNumber,
                                    snapshot.mirrorSource, snapshot.pixelWidth, snapshot.pixelHeight);
}
