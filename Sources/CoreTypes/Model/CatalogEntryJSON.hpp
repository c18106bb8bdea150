#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/CatalogEntry.hpp"
#include "CoreTypes/Model/CatalogFamily.hpp"

namespace screenweaver {

/// The raw value string.
template <>
struct JSONForm<CatalogFamily> {
    static void write(JSONWriter& writer, CatalogFamily family) { writer.string(rawValue(family)); }
    static bool read(JSONReader& reader, JSONValue& value, CatalogFamily& result);
};

/// Keys in field order; "year", "diagonalInches", "nativePPI" and "notes" are left out when
/// absent and read as absent when missing or null; every other key is required. A catalog
/// document is an array of these.
template <>
struct JSONForm<CatalogEntry> {
    static void write(JSONWriter& writer, const CatalogEntry& entry);
    static bool read(JSONReader& reader, JSONValue& value, CatalogEntry& result);
};

}  // namespace screenweaver
