#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "CoreTypes/Coding/DecodingError.hpp"
#include "CoreTypes/Coding/JSONReader.hpp"
#include "CoreTypes/Coding/JSONWriter.hpp"
#include "CoreTypes/Coding/ReadBuffer.hpp"
#include "CoreTypes/Model/Date.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// The JSON form of `T`: every type with one specialises this with
///
///     static void write(JSONWriter& writer, const T& value);
///     static bool read(JSONReader& reader, JSONValue& value, T& result);
///
/// `read` consumes `value` and fills `result`, which holds the type's default before. When it
/// returns false the reader holds the error, with the path inside `value`; callers put the path of
/// `value` in front as the error travels outwards. The specialisations sit in a file beside each
/// record's own.
template <class T>
struct JSONForm;

template <>
struct JSONForm<bool> {
    static void write(JSONWriter& writer, bool value) { writer.boolean(value); }
    static bool read(JSONReader& reader, JSONValue& value, bool& result) {
        return reader.boolean(value, result);
    }
};

/// A signed integer: any integral number from -2^63 to 2^63 - 1 (`60`, `60.0`, `1e2`, `-0`).
template <>
struct JSONForm<std::int64_t> {
    static void write(JSONWriter& writer, std::int64_t value) { writer.integer(value); }
    static bool read(JSONReader& reader, JSONValue& value, std::int64_t& result) {
        return reader.integer(value, "Int", std::numeric_limits<std::int64_t>::min(),
                              std::numeric_limits<std::int64_t>::max(), result);
    }
};

/// An unsigned 32-bit number: any integral number from 0 to 4294967295.
template <>
struct JSONForm<std::uint32_t> {
    static void write(JSONWriter& writer, std::uint32_t value) { writer.unsignedInteger(value); }
    static bool read(JSONReader& reader, JSONValue& value, std::uint32_t& result) {
        std::int64_t number = 0;
        if (!reader.integer(value, "UInt32", 0, std::numeric_limits<std::uint32_t>::max(), number)) {
            return false;
        }
        result = static_cast<std::uint32_t>(number);
        return true;
    }
};

/// A double: any number; `-0` reads back as negative zero.
template <>
struct JSONForm<double> {
    static void write(JSONWriter& writer, double value) { writer.number(value); }
    static bool read(JSONReader& reader, JSONValue& value, double& result) {
        return reader.number(value, result);
    }
};

template <>
struct JSONForm<std::string> {
    static void write(JSONWriter& writer, const std::string& value) { writer.string(value); }
    static bool read(JSONReader& reader, JSONValue& value, std::string& result) {
        std::string_view text;
        if (!reader.string(value, text)) {
            return false;
        }
        result.assign(text);
        return true;
    }
};

/// The canonical text; either letter case reads.
template <>
struct JSONForm<UUID> {
    static void write(JSONWriter& writer, const UUID& value);
    static bool read(JSONReader& reader, JSONValue& value, UUID& result);
};

/// ISO 8601 in UTC, `2026-11-21T09:30:00Z`, with a fraction of a second (up to six digits,
/// trailing zeros dropped) only when the date has one.
template <>
struct JSONForm<Date> {
    static void write(JSONWriter& writer, const Date& value);
    static bool read(JSONReader& reader, JSONValue& value, Date& result);
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

    static bool read(JSONReader& reader, JSONValue& value, std::vector<Element>& result) {
        coding::ReadBuffer<Element> elements;
        std::size_t count = 0;
        if (!elements.read(reader, value, count)) {
            return false;
        }
        elements.moveInto(result);
        return true;
    }
};

}  // namespace screenweaver
