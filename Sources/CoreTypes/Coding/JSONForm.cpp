#include "CoreTypes/Coding/JSONForm.hpp"

#include <cmath>
#include <fmt/format.h>
#include <limits>

#include "CoreTypes/Coding/ISO8601.hpp"
#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace coding {

std::string_view foundDescription(const JSONValue& value) {
    switch (value.type()) {
        case simdjson::dom::element_type::ARRAY:
            return "an array";
        case simdjson::dom::element_type::OBJECT:
            return "a dictionary";
        case simdjson::dom::element_type::INT64:
        case simdjson::dom::element_type::UINT64:
        case simdjson::dom::element_type::DOUBLE:
            return "number";
        case simdjson::dom::element_type::STRING:
            return "a string";
        case simdjson::dom::element_type::BOOL:
            return "bool";
        case simdjson::dom::element_type::NULL_VALUE:
            return "null";
    }
    return "null";
}

namespace {

// The failure of reading `value` as the type named `expected`: null is a missing value, anything
// else of the wrong kind a type mismatch.
DecodingError wrongKind(const JSONValue& value, std::string_view expected) {
    if (value.is_null()) {
        return DecodingError::valueNotFound(expected);
    }
    return DecodingError::typeMismatch(expected, foundDescription(value));
}

bool isNumber(const JSONValue& value) {
    const auto type = value.type();
    return type == simdjson::dom::element_type::INT64 || type == simdjson::dom::element_type::UINT64 ||
           type == simdjson::dom::element_type::DOUBLE;
}

// The number's text as the error names it.
std::string numberText(const JSONValue& value) {
    switch (value.type()) {
        case simdjson::dom::element_type::INT64:
            return fmt::format("{}", value.get_int64().value_unsafe());
        case simdjson::dom::element_type::UINT64:
            return fmt::format("{}", value.get_uint64().value_unsafe());
        default:
            return text::describe(value.get_double().value_unsafe());
    }
}

DecodingError doesNotFit(const JSONValue& value, std::string_view type) {
    return DecodingError::dataCorrupted(
        fmt::format("Parsed JSON number <{}> does not fit in {}.", numberText(value), type));
}

// An integral number within [minimum, maximum], whatever its JSON spelling.
std::expected<std::int64_t, DecodingError> integral(const JSONValue& value, std::string_view type,
                                                    std::int64_t minimum, std::int64_t maximum) {
    if (!isNumber(value)) {
        return std::unexpected(wrongKind(value, type));
    }
    std::int64_t result = 0;
    switch (value.type()) {
        case simdjson::dom::element_type::INT64:
            result = value.get_int64().value_unsafe();
            break;
        case simdjson::dom::element_type::UINT64:
            return std::unexpected(doesNotFit(value, type));
        default: {
            const double number = value.get_double().value_unsafe();
            // 2^63 is exactly representable; every integral double below it fits an int64.
            constexpr double twoToThe63 = 9223372036854775808.0;
            if (number != std::trunc(number) || number < -twoToThe63 || number >= twoToThe63) {
                return std::unexpected(doesNotFit(value, type));
            }
            result = static_cast<std::int64_t>(number);
            break;
        }
    }
    if (result < minimum || result > maximum) {
        return std::unexpected(doesNotFit(value, type));
    }
    return result;
}

}  // namespace

std::expected<simdjson::dom::object, DecodingError> object(const JSONValue& value) {
    simdjson::dom::object result;
    if (value.get_object().get(result) != simdjson::SUCCESS) {
        return std::unexpected(wrongKind(value, "Dictionary<String, Any>"));
    }
    return result;
}

std::expected<simdjson::dom::array, DecodingError> array(const JSONValue& value) {
    simdjson::dom::array result;
    if (value.get_array().get(result) != simdjson::SUCCESS) {
        return std::unexpected(wrongKind(value, "Array<Any>"));
    }
    return result;
}

std::expected<std::string_view, DecodingError> string(const JSONValue& value) {
    std::string_view result;
    if (value.get_string().get(result) != simdjson::SUCCESS) {
        return std::unexpected(wrongKind(value, "String"));
    }
    return result;
}

}  // namespace coding

std::expected<bool, DecodingError> JSONForm<bool>::read(const JSONValue& value) {
    bool result = false;
    if (value.get_bool().get(result) != simdjson::SUCCESS) {
        return std::unexpected(coding::wrongKind(value, "Bool"));
    }
    return result;
}

std::expected<std::int64_t, DecodingError> JSONForm<std::int64_t>::read(const JSONValue& value) {
    return coding::integral(value, "Int", std::numeric_limits<std::int64_t>::min(),
                            std::numeric_limits<std::int64_t>::max());
}

std::expected<std::uint32_t, DecodingError> JSONForm<std::uint32_t>::read(const JSONValue& value) {
    auto number = coding::integral(value, "UInt32", 0, std::numeric_limits<std::uint32_t>::max());
    if (!number) {
        return std::unexpected(std::move(number.error()));
    }
    return static_cast<std::uint32_t>(*number);
}

std::expected<double, DecodingError> JSONForm<double>::read(const JSONValue& value) {
    switch (value.type()) {
        case simdjson::dom::element_type::INT64:
            return static_cast<double>(value.get_int64().value_unsafe());
        case simdjson::dom::element_type::UINT64:
            return static_cast<double>(value.get_uint64().value_unsafe());
        case simdjson::dom::element_type::DOUBLE:
            return value.get_double().value_unsafe();
        default:
            return std::unexpected(coding::wrongKind(value, "Double"));
    }
}

std::expected<std::string, DecodingError> JSONForm<std::string>::read(const JSONValue& value) {
    auto text = coding::string(value);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    return std::string{*text};
}

void JSONForm<UUID>::write(JSONWriter& writer, const UUID& value) {
    const auto text = value.canonicalCharacters();
    writer.string(std::string_view{text.data(), text.size()});
}

std::expected<UUID, DecodingError> JSONForm<UUID>::read(const JSONValue& value) {
    auto text = coding::string(value);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    if (const auto id = UUID::parse(*text)) {
        return *id;
    }
    return std::unexpected(
        DecodingError::dataCorrupted("Attempted to decode UUID from invalid UUID string."));
}

void JSONForm<Date>::write(JSONWriter& writer, const Date& value) {
    if (const auto text = ISO8601::format(value)) {
        writer.string(*text);
        return;
    }
    writer.fail(EncodingError{"Date outside the years 0000 to 9999 cannot be written in ISO 8601."});
    writer.null();
}

std::expected<Date, DecodingError> JSONForm<Date>::read(const JSONValue& value) {
    auto text = coding::string(value);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    if (const auto date = ISO8601::parse(*text)) {
        return *date;
    }
    return std::unexpected(DecodingError::dataCorrupted("Expected date string to be ISO8601-formatted."));
}

}  // namespace screenweaver
