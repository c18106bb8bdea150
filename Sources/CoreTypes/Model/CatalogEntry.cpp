#include "CoreTypes/Model/CatalogEntry.hpp"

#include <fmt/format.h>
#include <limits>

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

std::pair<std::int64_t, std::int64_t> CatalogEntry::aspectRatio() const {
    // Euclid on the signed sizes; the divisor is pixelWidth itself when pixelHeight is 0.
    std::int64_t divisor = pixelWidth;
    std::int64_t remainder = pixelHeight;
    while (remainder != 0) {
        // x % -1 is 0, and computing it could overflow for the smallest integer.
        const std::int64_t next = remainder == -1 ? 0 : divisor % remainder;
        divisor = remainder;
        remainder = next;
    }
    if (divisor == std::numeric_limits<std::int64_t>::min()) {
        // Both sizes are 0 or the smallest integer, whose magnitude has no positive counterpart.
        return {pixelWidth == 0 ? 0 : -1, pixelHeight == 0 ? 0 : -1};
    }
    divisor = divisor < 0 ? -divisor : divisor;
    divisor = divisor < 1 ? 1 : divisor;
    return {pixelWidth / divisor, pixelHeight / divisor};
}

std::string CatalogEntry::aspectRatioString() const {
    const auto [width, height] = aspectRatio();
    return fmt::format("{}:{}", width, height);
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::CatalogEntry>::operator()(
    const screenweaver::CatalogEntry& entry) const noexcept {
    return screenweaver::hashFields(entry.id, entry.vendor, screenweaver::rawValue(entry.family), entry.name,
                                    entry.year, entry.diagonalInches, entry.pixelWidth, entry.pixelHeight,
                                    entry.nativePPI, entry.refreshRates, entry.hiDPI, entry.verified,
                                    entry.notes);
}
