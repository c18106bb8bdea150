#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CoreTypes/Model/CatalogFamily.hpp"

namespace screenweaver {

/// One real display model a user can make a virtual display from.
struct CatalogEntry {
    /// Stable identifier; a spec made from the entry keeps it as `catalogEntryID`.
    std::string id{};
    std::string vendor{};
    CatalogFamily family = CatalogFamily::external;
    std::string name{};
    /// Year of release.
    std::optional<std::int64_t> year{};
    /// Panel diagonal in inches.
    std::optional<double> diagonalInches{};
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    /// Native pixels per inch.
    std::optional<double> nativePPI{};
    /// Hertz, in the order offered (the order counts for equality).
    std::vector<double> refreshRates{};
    /// A HiDPI (2x) display.
    bool hiDPI = false;
    bool verified = false;
    std::optional<std::string> notes{};

    /// The pixel size reduced by its greatest common divisor: 3840x2160 gives (16, 9); a 0x0
    /// entry gives (0, 0).
    [[nodiscard]] std::pair<std::int64_t, std::int64_t> aspectRatio() const;

    /// The aspect ratio as "16:9".
    [[nodiscard]] std::string aspectRatioString() const;

    friend bool operator==(const CatalogEntry&, const CatalogEntry&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::CatalogEntry> {
    std::size_t operator()(const screenweaver::CatalogEntry& entry) const noexcept;
};
