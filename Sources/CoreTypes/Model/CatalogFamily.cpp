#include "CoreTypes/Model/CatalogFamily.hpp"

namespace screenweaver {

std::string_view rawValue(CatalogFamily family) {
    switch (family) {
        case CatalogFamily::external:
            return "external";
        case CatalogFamily::macbook:
            return "macbook";
        case CatalogFamily::iMac:
            return "imac";
        case CatalogFamily::iPad:
            return "ipad";
        case CatalogFamily::common:
            return "common";
    }
    return "external";
}

std::optional<CatalogFamily> catalogFamilyFromRawValue(std::string_view raw) {
    for (const CatalogFamily family : allCatalogFamilies) {
        if (rawValue(family) == raw) {
            return family;
        }
    }
    return std::nullopt;
}

std::string_view pickerTitle(CatalogFamily family) {
    switch (family) {
        case CatalogFamily::external:
            return "External displays";
        case CatalogFamily::macbook:
            return "MacBook";
        case CatalogFamily::iMac:
            return "iMac";
        case CatalogFamily::iPad:
            return "iPad";
        case CatalogFamily::common:
            return "Common formats";
    }
    return "External displays";
}

}  // namespace screenweaver
