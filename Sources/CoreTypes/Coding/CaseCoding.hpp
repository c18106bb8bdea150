#pragma once

#include <array>
#include <cstddef>
#include <expected>
#include <fmt/format.h>
#include <optional>
#include <string_view>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver::coding {

/// The case of an enum with payload, read from its object form: exactly one key that names a
/// case (other keys are ignored), holding the payload.
struct CaseMember {
    /// Index of the case in the list of names given.
    std::size_t index = 0;
    std::string_view name;
    JSONValue payload;
};

/// Finds the one case key of `value` among `caseNames`. Zero or several fail with the type
/// mismatch "Invalid number of keys found, expected one.".
template <std::size_t Count>
std::expected<CaseMember, DecodingError> readCase(const JSONValue& value,
                                                  const std::array<std::string_view, Count>& caseNames) {
    auto members = object(value);
    if (!members) {
        return std::unexpected(std::move(members.error()));
    }
    std::optional<CaseMember> found;
    std::size_t count = 0;
    for (const auto member : *members) {
        for (std::size_t index = 0; index < Count; ++index) {
            if (member.key == caseNames[index]) {
                ++count;
                found = CaseMember{index, caseNames[index], member.value};
                break;
            }
        }
    }
    if (count != 1) {
        return std::unexpected(DecodingError::invalidNumberOfCaseKeys());
    }
    return *found;
}

/// An enum without payload from its raw-value string; an unknown string is data-corrupted
/// ("Cannot initialize DynamicRange from invalid String value Standard").
template <class Enum, class FromRawValue>
std::expected<Enum, DecodingError> readRawValue(const JSONValue& value, std::string_view typeName,
                                                FromRawValue fromRawValue) {
    auto text = string(value);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    if (const std::optional<Enum> result = fromRawValue(*text)) {
        return *result;
    }
    return std::unexpected(DecodingError::dataCorrupted(
        fmt::format("Cannot initialize {} from invalid String value {}", typeName, *text)));
}

}  // namespace screenweaver::coding
