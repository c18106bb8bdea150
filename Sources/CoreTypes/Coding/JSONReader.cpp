#include "CoreTypes/Coding/JSONReader.hpp"

#include <simdjson.h>

#include <cmath>
#include <cstring>
#include <fmt/format.h>
#include <vector>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace {

using coding::text::isDigit;

// The parser's unescaping of the string whose first character is at `source`, into `target`; the
// end of what it wrote, or null for an invalid escape. simdjson 3.2 gave the call a third
// parameter, whether a lone surrogate may become U+FFFD; never, as before it.
template <class Parser>
std::uint8_t* unescape(const Parser& parser, const std::uint8_t* source, std::uint8_t* target) {
    if constexpr (requires { parser.parse_string(source, target); }) {
        return parser.parse_string(source, target);
    } else {
        return parser.parse_string(source, target, false);
    }
}

DecodingError doesNotFit(std::string_view number, std::string_view type) {
    return DecodingError::dataCorrupted(
        fmt::format("Parsed JSON number <{}> does not fit in {}.", number, type));
}

}  // namespace

bool JSONReader::wrongKind(JSONValue& value, std::string_view expected) {
    std::string_view found;
    switch (next()) {
        case '{':
            found = "a dictionary";
            break;
        case '[':
            found = "an array";
            break;
        case '"':
            found = "a string";
            break;
        case 't':
        case 'f':
            found = "bool";
            break;
        case 'n':
            found = "null";
            break;
        default:
            found = next() == '-' || isDigit(next()) ? "number" : "";
            break;
    }
    if (found.empty() || !skip(value)) {
        return markMalformed();
    }
    if (found == "null") {
        return fail(DecodingError::valueNotFound(expected));
    }
    return fail(DecodingError::typeMismatch(expected, found));
}

bool JSONReader::skip(JSONValue& value) {
    switch (next()) {
        case '{': {
            if (!enter('{', '}', {}, value)) {
                return false;
            }
            if (take('}')) {
                leave();
                return true;
            }
            for (bool more = true; more;) {
                std::string_view key;
                if (next() != '"' || !stringToken(key) || !take(':')) {
                    return markMalformed();
                }
                JSONValue member{position_};
                if (!skip(member) || !separator('}', more)) {
                    return false;
                }
            }
            leave();
            return true;
        }
        case '[': {
            if (!enter('[', ']', {}, value)) {
                return false;
            }
            if (take(']')) {
                leave();
                return true;
            }
            for (bool more = true; more;) {
                JSONValue element{position_};
                if (!skip(element) || !separator(']', more)) {
                    return false;
                }
            }
            leave();
            return true;
        }
        case '"': {
            std::string_view text;
            return stringToken(text);
        }
        case 't':
        case 'f': {
            bool flag = false;
            return boolean(value, flag);
        }
        case 'n':
            return takeNull(value) || markMalformed();
        default: {
            Number number;
            return ((next() == '-' || isDigit(next())) && numberToken(number)) || markMalformed();
        }
    }
}

bool JSONReader::takeNullLiteral() {
    if (!isLiteral(nextText(), "null")) {
        return false;
    }
    ++position_;
    return true;
}

bool JSONReader::boolean(JSONValue& value, bool& result) {
    const char first = next();
    if (first != 't' && first != 'f') {
        return wrongKind(value, "Bool");
    }
    result = first == 't';
    if (!(result ? isLiteral(nextText(), "true") : isLiteral(nextText(), "false"))) {
        return markMalformed();
    }
    ++position_;
    return true;
}

std::string_view JSONReader::unescapedStringToken(const char* start) {
    // Undone, and checked, by the parser that found the tokens.
    auto* unescaped = reinterpret_cast<std::uint8_t*>(tokens_.unescaped);
    const std::uint8_t* end =
        unescape(*tokens_.parser, reinterpret_cast<const std::uint8_t*>(start), unescaped);
    if (end == nullptr) {
        markMalformed();
        return {};
    }
    ++position_;
    return {tokens_.unescaped, static_cast<std::size_t>(end - unescaped)};
}

bool JSONReader::otherNumberToken(Number& number) {
    const char* text = nextText();
    number.negative = *text == '-';
    const std::uint32_t length = tokens_.positions[position_ + 1] - tokens_.positions[position_];
    if (!numberTokenThroughParser(number, text, length)) {
        return markMalformed();
    }
    ++position_;
    return true;
}

bool JSONReader::numberTokenThroughParser(Number& number, const char* text, std::size_t length) {
    thread_local simdjson::dom::parser parser;
    thread_local std::vector<char> padded;
    if (padded.size() < length + simdjson::SIMDJSON_PADDING) {
        padded.resize(length + simdjson::SIMDJSON_PADDING);
    }
    std::memcpy(padded.data(), text, length);
    std::memset(padded.data() + length, 0, simdjson::SIMDJSON_PADDING);
    simdjson::dom::element element;
    if (parser.parse(padded.data(), length, false).get(element) != simdjson::SUCCESS) {
        return false;
    }
    switch (element.type()) {
        case simdjson::dom::element_type::INT64:
            number.kind = NumberKind::signedInteger;
            number.signedValue = element.get_int64().value_unsafe();
            return true;
        case simdjson::dom::element_type::UINT64:
            number.kind = NumberKind::unsignedInteger;
            number.unsignedValue = element.get_uint64().value_unsafe();
            return true;
        case simdjson::dom::element_type::DOUBLE:
            number.kind = NumberKind::real;
            number.realValue = element.get_double().value_unsafe();
            return true;
        default:
            return false;
    }
}

bool JSONReader::otherInteger(JSONValue& value, std::string_view typeName, std::int64_t minimum,
                              std::int64_t maximum, const Number& read, std::int64_t& result) {
    Number number = read;
    if (position_ == value.token) {
        if (next() != '-' && !isDigit(next())) {
            return wrongKind(value, typeName);
        }
        if (!otherNumberToken(number)) {
            return false;
        }
    }
    switch (number.kind) {
        case NumberKind::signedInteger:
            result = number.signedValue;
            return (result >= minimum && result <= maximum) ||
                   fail(doesNotFit(fmt::format("{}", result), typeName));
        case NumberKind::unsignedInteger:
            return fail(doesNotFit(fmt::format("{}", number.unsignedValue), typeName));
        case NumberKind::real:
            break;
    }
    const double real = number.realValue;
    // 2^63 is exactly representable; every integral double below it fits an int64.
    constexpr double twoToThe63 = 9223372036854775808.0;
    if (real != std::trunc(real) || real < -twoToThe63 || real >= twoToThe63) {
        return fail(doesNotFit(text::describe(real), typeName));
    }
    result = static_cast<std::int64_t>(real);
    return (result >= minimum && result <= maximum) || fail(doesNotFit(text::describe(real), typeName));
}

bool JSONReader::otherNumber(JSONValue& value, double& result) {
    if (next() != '-' && !isDigit(next())) {
        return wrongKind(value, "Double");
    }
    Number number;
    if (!otherNumberToken(number)) {
        return false;
    }
    switch (number.kind) {
        case NumberKind::signedInteger:
            // The integer zero has no sign; the text's `-0` has one.
            result =
                number.negative && number.signedValue == 0 ? -0.0 : static_cast<double>(number.signedValue);
            return true;
        case NumberKind::unsignedInteger:
            result = static_cast<double>(number.unsignedValue);
            return true;
        case NumberKind::real:
            result = number.realValue;
            return true;
    }
    return true;
}

}  // namespace screenweaver
