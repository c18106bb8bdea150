#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "CoreTypes/Coding/JSONCoding.hpp"

namespace screenweaver::testing {

/// Decodes `json` as a `T` and checks that it fails with exactly this kind, path and text.
template <class T>
void expectDecodingError(std::string_view json, DecodingError::Kind kind, std::string_view path,
                         std::string_view debugDescription) {
    const auto decoded = decode<T>(json);
    ASSERT_FALSE(decoded.has_value()) << "decoded: " << json;
    EXPECT_EQ(DecodingError::caseName(decoded.error().kind), DecodingError::caseName(kind)) << json;
    EXPECT_EQ(decoded.error().codingPath, path) << json;
    EXPECT_EQ(decoded.error().debugDescription, debugDescription) << json;
}

/// Encodes `value`, failing the test if that fails.
template <class T>
std::string encoded(const T& value) {
    auto text = encode(value);
    EXPECT_TRUE(text.has_value()) << (text ? "" : text.error().description());
    return text ? *text : std::string{};
}

/// Decodes `json`, failing the test with the error's text if that fails.
template <class T>
T decoded(std::string_view json) {
    auto value = decode<T>(json);
    EXPECT_TRUE(value.has_value()) << json << "\n" << (value ? "" : value.error().description());
    return value ? *value : T{};
}

}  // namespace screenweaver::testing
