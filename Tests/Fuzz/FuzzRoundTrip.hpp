#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "CoreTypes/Coding/JSONCoding.hpp"

namespace screenweaver::fuzzing {

/// Decodes arbitrary bytes as a `T`. Whatever decodes must encode, and the text it encodes to
/// must decode to an equal value; anything else is a bug, reported by aborting.
template <class T>
void decodeAndRoundTrip(const std::uint8_t* data, std::size_t size) {
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    const auto value = decode<T>(input);
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
}

}  // namespace screenweaver::fuzzing
