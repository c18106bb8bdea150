#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <type_traits>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver {

namespace coding {

/// One JSON text being read on this thread, from `open` to `close`. The parser's first stage
/// splits the text into tokens where it stands; the reader reads a padded copy of it in a buffer of
/// this thread's (see `JSONTokens`).
class JSONDocument {
public:
    /// Splits `json` into tokens; false when that already shows it is not JSON (invalid UTF-8, an
    /// unclosed string, a raw control character in a string, no value at all).
    bool open(std::string_view json);

    /// After the document's value was read, `read` saying whether that succeeded: the reading
    /// error, or the data-corrupted "The given data was not valid JSON." when the text turned out
    /// not to be JSON anywhere (more text after the value included).
    std::expected<void, DecodingError> close(bool read);

    JSONReader& reader() { return reader_; }

private:
    JSONReader reader_;
};

}  // namespace coding

/// Decodes a `T` from JSON text. Never throws: every failure is a `DecodingError`. Malformed text,
/// invalid UTF-8 and numbers too large to represent, anywhere in the text, are data-corrupted ("The
/// given data was not valid JSON."), whatever else is wrong with it.
template <class T>
std::expected<T, DecodingError> decode(std::string_view json) {
    coding::JSONDocument document;
    // A record is default-initialised, not cleared first: its members' initialisers give its
    // value. A number or a flag is zero.
    T value;
    if constexpr (std::is_scalar_v<T>) {
        value = T{};
    }
    // The document's one value, at its first token.
    JSONValue root;
    const bool read = document.open(json) && JSONForm<T>::read(document.reader(), root, value);
    if (auto closed = document.close(read); !closed) {
        return std::unexpected(std::move(closed.error()));
    }
    return value;
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
