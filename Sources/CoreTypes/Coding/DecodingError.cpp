#include "CoreTypes/Coding/DecodingError.hpp"

#include <fmt/format.h>
#include <utility>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

DecodingError DecodingError::keyNotFound(std::string_view key) {
    return {Kind::keyNotFound, std::string{key}, fmt::format("No value associated with key \"{}\".", key)};
}

DecodingError DecodingError::typeMismatch(std::string_view expected, std::string_view found) {
    return {
        Kind::typeMismatch, {}, fmt::format("Expected to decode {} but found {} instead.", expected, found)};
}

DecodingError DecodingError::invalidNumberOfCaseKeys() {
    return {Kind::typeMismatch, {}, "Invalid number of keys found, expected one."};
}

DecodingError DecodingError::valueNotFound(std::string_view expected) {
    return {Kind::valueNotFound, {}, fmt::format("Expected {} value but found null instead.", expected)};
}

DecodingError DecodingError::dataCorrupted(std::string debugDescription) {
    return {Kind::dataCorrupted, {}, std::move(debugDescription)};
}

DecodingError& DecodingError::prependKey(std::string_view key) {
    if (codingPath.empty()) {
        codingPath = key;
    } else if (codingPath.front() == '[') {
        codingPath.insert(0, key);
    } else {
        codingPath.insert(0, fmt::format("{}.", key));
    }
    return *this;
}

DecodingError& DecodingError::prependIndex(std::size_t index) {
    const bool joinsDirectly = codingPath.empty() || codingPath.front() == '[';
    codingPath.insert(0, joinsDirectly ? fmt::format("[{}]", index) : fmt::format("[{}].", index));
    return *this;
}

std::string_view DecodingError::caseName(Kind kind) {
    switch (kind) {
        case Kind::keyNotFound:
            return "keyNotFound";
        case Kind::typeMismatch:
            return "typeMismatch";
        case Kind::valueNotFound:
            return "valueNotFound";
        case Kind::dataCorrupted:
            return "dataCorrupted";
    }
    std::unreachable();
}

std::string DecodingError::description() const {
    return text::CaseDescription{caseName(kind)}
        .string("codingPath", codingPath)
        .string("debugDescription", debugDescription)
        .str();
}

}  // namespace screenweaver
