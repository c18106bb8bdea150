#pragma once

#include <unordered_map>
#include <unordered_set>

#include "CoreTypes/Coding/AlternatingMap.hpp"
#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayRefKey.hpp"

namespace screenweaver {

/// `{"virtual":{"_0":"<UUID>"}}` or `{"physical":{"colorSyncUUID":"<text>"}}`.
template <>
struct JSONForm<DisplayRef> {
    static void write(JSONWriter& writer, const DisplayRef& ref);
    static std::expected<DisplayRef, DecodingError> read(const JSONValue& value);
};

/// A set of references: an array of reference objects, sorted by their key text; a repeated
/// reference is kept once.
template <>
struct JSONForm<std::unordered_set<DisplayRef>> {
    static void write(JSONWriter& writer, const std::unordered_set<DisplayRef>& refs);
    static std::expected<std::unordered_set<DisplayRef>, DecodingError> read(const JSONValue& value);
};

/// A map keyed by references: the flat array alternating reference object and value, sorted by
/// the references' key text.
template <class Value>
struct JSONForm<std::unordered_map<DisplayRef, Value>> {
    static void write(JSONWriter& writer, const std::unordered_map<DisplayRef, Value>& map) {
        coding::writeAlternatingMap(writer, map, DisplayRefKey::less);
    }
    static std::expected<std::unordered_map<DisplayRef, Value>, DecodingError> read(const JSONValue& value) {
        return coding::readAlternatingMap<DisplayRef, Value>(value);
    }
};

}  // namespace screenweaver
