#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace screenweaver {

/// Why a JSON text did not decode into a value, in the terms of a keyed coder: the kind of
/// failure, the coding path of the offending value (`groups[2].displays[0].rotation`; empty for
/// the document itself) and a sentence for a developer.
struct DecodingError {
    enum class Kind {
        /// A required key is missing; the path ends with that key.
        keyNotFound,
        /// A value has the wrong JSON type, or an enum object has zero or several case keys.
        typeMismatch,
        /// A required value is null.
        valueNotFound,
        /// The value has the right type but cannot be taken: malformed JSON, a number out of
        /// range, an unknown raw value, an invalid UUID or date.
        dataCorrupted,
    };

    Kind kind = Kind::dataCorrupted;
    std::string codingPath;
    std::string debugDescription;

    static DecodingError keyNotFound(std::string_view key);
    /// `Expected to decode <expected> but found <found> instead.`
    static DecodingError typeMismatch(std::string_view expected, std::string_view found);
    /// The type mismatch of an enum object whose case keys are not exactly one.
    static DecodingError invalidNumberOfCaseKeys();
    /// `Expected <expected> value but found null instead.`
    static DecodingError valueNotFound(std::string_view expected);
    static DecodingError dataCorrupted(std::string debugDescription);

    /// Puts the key `key` in front of the path, as the error travels out of the object holding it.
    DecodingError& prependKey(std::string_view key);
    /// Puts the index `index` in front of the path, as the error travels out of its array.
    DecodingError& prependIndex(std::size_t index);

    /// The textual form: `keyNotFound(codingPath: "groups[0]", debugDescription: "...")`.
    [[nodiscard]] std::string description() const;

    /// The name of a kind: `keyNotFound`, `typeMismatch`, `valueNotFound`, `dataCorrupted`.
    static std::string_view caseName(Kind kind);

    friend bool operator==(const DecodingError&, const DecodingError&) = default;
};

}  // namespace screenweaver
