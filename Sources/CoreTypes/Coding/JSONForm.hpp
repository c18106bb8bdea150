#pragma once

#include <simdjson.h>

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "CoreTypes/Coding/DecodingError.hpp"
#include "CoreTypes/Coding/JSONWriter.hpp"
#include "CoreTypes/Model/Date.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// A value of a parsed JSON document; it lives as long as the parse that produced it.
using JSONValue = simdjson::dom::element;

/// The JSON form of `T`: every type with one specialises this with
///
///     static void write(JSONWriter& writer, const T& value);
///     static std::expected<T, DecodingError> read(const JSONValue& value);
///
/// `read` reports errors with the path inside `value`; callers put the path of `value` in front
/// as the error travels outwards. The specialisations sit in a file beside each record's own.
template <class T>
struct JSONForm;

namespace coding {

/// How a coder names the JSON type of `value` in a type mismatch: "a string", "number", "bool",
/// "a dictionary", "an array" or "null".
std::string_view foundDescription(const JSONValue& value);

/// The value as an object: a type mismatch for anything else, value-not-found for null.
std::expected<simdjson::dom::object, DecodingError> object(const JSONValue& value);

/// The value as an array: a type mismatch for anything else, value-not-found for null.
std::expected<simdjson::dom::array, DecodingError> array(const JSONValue& value);

/// The value as a string: a type mismatch for anything else, value-not-found for null.
std::expected<std::string_view, DecodingError> string(const JSONValue& value);

}  // namespace coding

template <>
struct JSONForm<bool> {
    static void write(JSONWriter& writer, bool value) { writer.boolean(value); }
    static std::expected<bool, DecodingError> read(const JSONValue& value);
};

/// A signed integer: any integral number from -2^63 to 2^63 - 1 (`60`, `60.0`, `1e2`, `-0`).
template <>
struct JSONForm<std::int64_t> {
    static void write(JSONWriter& writer, std::int64_t value) { writer.integer(value); }
    static std::expected<std::int64_t, DecodingError> read(const JSONValue& value);
};

/// An unsigned 32-bit number: any integral number from 0 to 4294967295.
template <>
struct JSONForm<std::uint32_t> {
    static void write(JSONWriter& writer, std::uint32_t value) { writer.unsignedInteger(value); }
    static std::expected<std::uint32_t, DecodingError> read(const JSONValue& value);
};

/// A double: any number.
template <>
struct JSONForm<double> {
    static void write(JSONWriter& writer, double value) { writer.number(value); }
    static std::expected<double, DecodingError> read(const JSONValue& value);
};

template <>
struct JSONForm<std::string> {
    static void write(JSONWriter& writer, const std::string& value) { writer.string(value); }
    static std::expected<std::string, DecodingError> read(const JSONValue& value);
};

/// The canonical text; either letter case reads.
template <>
struct JSONForm<UUID> {
    static void write(JSONWriter& writer, const UUID& value);
    static std::expected<UUID, DecodingError> read(const JSONValue& value);
};

/// ISO 8601 in UTC, `2026-11-21T09:30:00Z`, with a fraction of a second (up to six digits,
/// trailing zeros dropped) only when the date has one.
template <>
struct JSONForm<Date> {
    static void write(JSONWriter& writer, const Date& value);
    static std::expected<Date, DecodingError> read(const JSONValue& value);
};

/// An array, in order.
template <class Element>
struct JSONForm<std::vector<Element>> {
    static void write(JSONWriter& writer, const std::vector<Element>& values) {
        writer.beginArray();
        for (const auto& value : values) {
            JSONForm<Element>::write(writer, value);
        }
        writer.endArray();
    }

    static std::expected<std::vector<Element>, DecodingError> read(const JSONValue& value) {
        auto elements = coding::array(value);
        if (!elements) {
            return std::unexpected(std::move(elements.error()));
        }
        std::vector<Element> values;
        values.reserve(elements->size());
        std::size_t index = 0;
        for (const JSONValue element : *elements) {
            auto decoded = JSONForm<Element>::read(element);
            if (!decoded) {
                decoded.error().prependIndex(index);
                return std::unexpected(std::move(decoded.error()));
            }
            values.push_back(std::move(*decoded));
            ++index;
        }
        return values;
    }
};

}  // namespace screenweaver
