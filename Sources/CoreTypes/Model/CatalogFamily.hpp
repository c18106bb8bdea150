#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace screenweaver {

/// The group a catalog entry is listed under in the picker.
enum class CatalogFamily {
    external,
    macbook,
    iMac,
    iPad,
    common,
};

/// Every case, in declaration order.
inline constexpr std::array<CatalogFamily, 5> allCatalogFamilies{
    CatalogFamily::external, CatalogFamily::macbook, CatalogFamily::iMac,
    CatalogFamily::iPad,     CatalogFamily::common,
};

/// The JSON form, all lower case even where the case name is not ("imac", "ipad").
std::string_view rawValue(CatalogFamily family);

/// The case whose raw value is exactly `raw` (case-sensitive: "iMac" gives nothing), or nothing.
std::optional<CatalogFamily> catalogFamilyFromRawValue(std::string_view raw);

/// The heading the family's entries are shown under: "External displays", "MacBook", "iMac",
/// "iPad", "Common formats".
std::string_view pickerTitle(CatalogFamily family);

}  // namespace screenweaver
