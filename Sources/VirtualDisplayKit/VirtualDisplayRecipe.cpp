#include "VirtualDisplayKit/VirtualDisplayRecipe.hpp"

#include "CoreTypes/Hasher.hpp"
#include "CoreTypes/Model/VirtualDisplaySerial.hpp"
#include "CoreTypes/VirtualDisplayVendor.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"

namespace screenweaver {

VirtualDisplayRecipe VirtualDisplayRecipe::make(const VirtualDisplaySpec& spec, double ppi) {
    return VirtualDisplayRecipe{
        .name = spec.name,
        .maxPixelsWide = VirtualDisplayGeometry::pixelCount(spec.pixelWidth),
        .maxPixelsHigh = VirtualDisplayGeometry::pixelCount(spec.pixelHeight),
        .sizeInMillimeters = VirtualDisplayGeometry::sizeInMillimeters(spec, ppi),
        .serialNumber = VirtualDisplaySerial::serialNumber(spec.id),
        .vendorID = virtualDisplayVendorID,
        .productID = virtualDisplayProductID,
        .modes = VirtualDisplayGeometry::modes(spec),
        .hiDPI = spec.hiDPI,
        .rotation = static_cast<std::uint32_t>(spec.rotation),
        .dynamicRange = spec.dynamicRange,
        .ppi = ppi,
    };
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::VirtualDisplayRecipe>::operator()(
    const screenweaver::VirtualDisplayRecipe& recipe) const noexcept {
    return screenweaver::hashFields(recipe.name, recipe.maxPixelsWide, recipe.maxPixelsHigh,
                                    recipe.sizeInMillimeters, recipe.serialNumber, recipe.vendorID,
                                    recipe.productID, recipe.modes, recipe.hiDPI, recipe.rotation,
                                    screenweaver::rawValue(recipe.dynamicRange), recipe.ppi);
}
