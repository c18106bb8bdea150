#pragma once

#include <fmt/format.h>
#include <optional>
#include <string_view>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver::coding {

/// An enum without payload from its raw-value string; an unknown string is data-corrupted
/// ("Cannot initialize DynamicRange from invalid String value Standard").
template <class Enum, class FromRawValue>
bool readRawValue(JSONReader& reader, JSONValue& value, std::string_view typeName, FromRawValue fromRawValue,
                  Enum& result) {
    std::string_view text;
    if (!reader.string(value, text)) {
        return false;
    }
    if (const std::optional<Enum> known = fromRawValue(text)) {
        result = *known;
        return true;
    }
    return reader.fail(DecodingError::dataCorrupted(
        fmt::format("Cannot initialize {} from invalid String value {}", typeName, text)));
}

}  // namespace screenweaver::coding
