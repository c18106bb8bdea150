#pragma once

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "CoreTypes/Coding/JSONCoding.hpp"

namespace screenweaver::fuzzing {

/// Decodes arbitrary bytes as a `T`, and aborts (a finding) when
/// - the decode calls the text malformed and simdjson's own parser does not, or the other way
///   round: the reader must agree with the parser on what JSON is, skipped values included;
/// - a value that decoded does not encode, or its text does not decode to an equal value;
/// - encoding that value again gives other bytes than the first time (a sign of zero lost, say).
template <class T>
void decodeAndRoundTrip(const std::uint8_t* data, std::size_t size) {
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    const auto value = decode<T>(input);

    thread_local simdjson::dom::parser parser;
    simdjson::dom::element root;
    const bool parses = parser.parse(input.data(), input.size()).get(root) == simdjson::SUCCESS;
    const bool malformed = !value && value.error().kind == DecodingError::Kind::dataCorrupted &&
                           value.error().debugDescription == "The given data was not valid JSON.";
    if (parses == malformed) {
        std::abort();
    }

    if (!value) {
        return;
    }
    const auto json = encode(*value);
    if (!json) {
        std::abort();
    }
    const auto back = decode<T>(*json);
    if (!back || !(*back == *value)) {
        std::abort();
    }
    const auto again = encode(*back);
    if (!again || *again != *json) {
        std::abort();
    }
}

}  // namespace screenweaver::fuzzing
