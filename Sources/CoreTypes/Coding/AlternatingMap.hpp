#pragma once

#include <algorithm>
#include <expected>
#include <unordered_map>
#include <vector>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver::coding {

// A map whose keys are not strings is written as one flat array that alternates key and value:
// [key, value, key, value, ...]. The pairs go out sorted by `less` on the keys, so equal maps
// always give equal bytes; a reader takes them in any order, the later of two equal keys wins,
// and an odd number of elements fails.

template <class Key, class Value, class Less>
void writeAlternatingMap(JSONWriter& writer, const std::unordered_map<Key, Value>& map, Less less) {
    std::vector<const typename std::unordered_map<Key, Value>::value_type*> entries;
    entries.reserve(map.size());
    for (const auto& entry : map) {
        entries.push_back(&entry);
    }
    std::sort(entries.begin(), entries.end(),
              [&less](const auto* lhs, const auto* rhs) { return less(lhs->first, rhs->first); });
    writer.beginArray();
    for (const auto* entry : entries) {
        JSONForm<Key>::write(writer, entry->first);
        JSONForm<Value>::write(writer, entry->second);
    }
    writer.endArray();
}

template <class Key, class Value>
std::expected<std::unordered_map<Key, Value>, DecodingError> readAlternatingMap(const JSONValue& value) {
    auto elements = array(value);
    if (!elements) {
        return std::unexpected(std::move(elements.error()));
    }
    const std::size_t count = elements->size();
    if (count % 2 != 0) {
        return std::unexpected(DecodingError::dataCorrupted(
            "Expected collection of key-value pairs; encountered odd-length array instead."));
    }
    std::unordered_map<Key, Value> map;
    map.reserve(count / 2);
    auto element = elements->begin();
    for (std::size_t index = 0; index < count; index += 2) {
        auto key = JSONForm<Key>::read(*element);
        if (!key) {
            key.error().prependIndex(index);
            return std::unexpected(std::move(key.error()));
        }
        ++element;
        auto mapped = JSONForm<Value>::read(*element);
        if (!mapped) {
            mapped.error().prependIndex(index + 1);
            return std::unexpected(std::move(mapped.error()));
        }
        ++element;
        map.insert_or_assign(std::move(*key), std::move(*mapped));
    }
    return map;
}

}  // namespace screenweaver::coding
