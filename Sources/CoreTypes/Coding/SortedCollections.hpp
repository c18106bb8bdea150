#pragma once

#include <algorithm>
#include <boost/container/flat_map.hpp>
#include <boost/container/flat_set.hpp>
#include <cstddef>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver {

namespace coding {

// Puts elements read in the order of the text into the order of their collection: stable, so of
// several equal keys the one that came last in the text is kept (`keepLast`) or the first one.
template <class Sequence, class Less>
void sortReadElements(Sequence& elements, Less less, bool keepLast) {
    const auto unordered =
        std::adjacent_find(elements.begin(), elements.end(),
                           [&less](const auto& lhs, const auto& rhs) { return !less(lhs, rhs); });
    if (unordered == elements.end()) {
        return;
    }
    std::stable_sort(elements.begin(), elements.end(), less);
    auto kept = elements.begin();
    for (auto element = elements.begin(); element != elements.end(); ++element) {
        const auto next = element + 1;
        const bool equalFollows = next != elements.end() && !less(*element, *next);
        const bool equalPrecedes = kept != elements.begin() && !less(*(kept - 1), *element);
        if ((keepLast && equalFollows) || (!keepLast && equalPrecedes)) {
            continue;
        }
        if (kept != element) {
            *kept = std::move(*element);
        }
        ++kept;
    }
    elements.erase(kept, elements.end());
}

}  // namespace coding

/// A map whose keys are not strings: one flat array that alternates key and value, [key, value,
/// key, value, ...], in the map's order. The maps of the model order their keys as the keys' texts
/// sort, so equal maps always give equal bytes. A reader takes the pairs in any order; of two equal
/// keys the later one wins, and an odd number of elements fails.
template <class Key, class Value, class Order>
struct JSONForm<boost::container::flat_map<Key, Value, Order>> {
    using Map = boost::container::flat_map<Key, Value, Order>;

    static void write(JSONWriter& writer, const Map& map) {
        writer.beginArray();
        for (const auto& [key, value] : map) {
            JSONForm<Key>::write(writer, key);
            JSONForm<Value>::write(writer, value);
        }
        writer.endArray();
    }

    static bool read(JSONReader& reader, JSONValue& value, Map& map) {
        // A pair value-initialises its key and value, which clears them first; an entry of its own
        // is only default-initialised (see `coding::DefaultInitialising`).
        struct Entry {
            Key key;
            Value value;
        };
        coding::ReadBuffer<Entry> entries;
        Entry* entry = nullptr;
        std::size_t count = 0;
        const bool read = reader.readArray(
            value,
            [&](JSONValue& element) {
                if (count % 2 == 0) {
                    entry = &entries.next();
                    return reader.read(element, entry->key);
                }
                return reader.read(element, entry->value);
            },
            count);
        if (reader.malformed()) {
            return false;
        }
        // The pairs are counted first, whatever their keys and values say.
        if (count % 2 != 0) {
            return reader.fail(DecodingError::dataCorrupted(
                "Expected collection of key-value pairs; encountered odd-length array instead."));
        }
        if (!read) {
            return false;
        }
        typename Map::sequence_type sequence;
        entries.moveInto(sequence, [](Entry&& taken) {
            return std::pair<Key, Value>{std::move(taken.key), std::move(taken.value)};
        });
        const Order order = map.key_comp();
        coding::sortReadElements(
            sequence, [&order](const auto& lhs, const auto& rhs) { return order(lhs.first, rhs.first); },
            true);
        map.adopt_sequence(boost::container::ordered_unique_range, std::move(sequence));
        return true;
    }
};

/// A set: an array of its elements in the set's order. A reader takes them in any order and keeps
/// a repeated element once.
template <class Element, class Order>
struct JSONForm<boost::container::flat_set<Element, Order>> {
    using Set = boost::container::flat_set<Element, Order>;

    static void write(JSONWriter& writer, const Set& set) {
        writer.beginArray();
        for (const auto& element : set) {
            JSONForm<Element>::write(writer, element);
        }
        writer.endArray();
    }

    static bool read(JSONReader& reader, JSONValue& value, Set& set) {
        coding::ReadBuffer<Element> elements;
        std::size_t count = 0;
        if (!elements.read(reader, value, count)) {
            return false;
        }
        typename Set::sequence_type sequence;
        elements.moveInto(sequence);
        coding::sortReadElements(sequence, set.key_comp(), false);
        set.adopt_sequence(boost::container::ordered_unique_range, std::move(sequence));
        return true;
    }
};

}  // namespace screenweaver
