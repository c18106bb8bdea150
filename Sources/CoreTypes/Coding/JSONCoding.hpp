#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver {

namespace coding {

/// Parses `json` with this thread's parser; the value lives until the thread's next parse.
/// Malformed text, invalid UTF-8 and numbers too large to represent are data-corrupted ("The
/// given data was not valid JSON.").
std::expected<JSONValue, DecodingError> parse(std::string_view json);

}  // namespace coding

/// Decodes a `T` from JSON text. Never throws: every failure is a `DecodingError`.
template <class T>
std::expected<T, DecodingError> decode(std::string_view json) {
    const auto value = coding::parse(json);
    if (!value) {
        return std::unexpected(value.error());
    }
    return JSONForm<T>::read(*value);
}

/// Encodes `value` as compact JSON text, keys in the type's order. Fails only for a value JSON
/// cannot carry (NaN, an infinity, a date outside the years 0000 to 9999).
template <class T>
std::expected<std::string, EncodingError> encode(const T& value) {
    JSONWriter writer;
    JSONForm<T>::write(writer, value);
    return std::move(writer).finish();
}

}  // namespace screenweaver
