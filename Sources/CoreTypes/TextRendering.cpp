#include "CoreTypes/TextRendering.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fmt/format.h>

namespace screenweaver::text {

namespace {

// Above this magnitude, doubles print in exponential form (2^53).
constexpr double largestPlainMagnitude = 9007199254740992.0;

}  // namespace

std::string describe(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-inf" : "inf";
    }
    if (value == 0.0) {
        return std::signbit(value) ? "-0.0" : "0.0";
    }
    // The shortest round-trip digits, read off the scientific form "d.ddde+XX".
    std::array<char, 64> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
    const std::string_view scientific{buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
    const auto exponentMark = scientific.find('e');
    const int exponent = std::atoi(scientific.data() + exponentMark + 1);
    const bool negative = value < 0;
    std::string digits;
    for (const char character : scientific.substr(0, exponentMark)) {
        if (character >= '0' && character <= '9') {
            digits.push_back(character);
        }
    }

    if (std::fabs(value) > largestPlainMagnitude || exponent < -4) {
        return std::string{scientific};
    }
    std::string text = negative ? "-" : "";
    if (exponent < 0) {
        text += "0.";
        text.append(static_cast<std::size_t>(-exponent - 1), '0');
        text += digits;
        return text;
    }
    const auto integerDigits = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= integerDigits) {
        text += digits;
        text.append(integerDigits - digits.size(), '0');
        text += ".0";
    } else {
        text += digits.substr(0, integerDigits);
        text += '.';
        text += digits.substr(integerDigits);
    }
    return text;
}

std::string quoted(std::string_view value) {
    std::string text = "\"";
    for (const char character : value) {
        switch (character) {
            case '\\':
                text += "\\\\";
                break;
            case '"':
                text += "\\\"";
                break;
            case '\0':
                text += "\\0";
                break;
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            case '\t':
                text += "\\t";
                break;
            default: {
                const auto code = static_cast<unsigned char>(character);
                if (code < 0x20 || code == 0x7F) {
                    text += fmt::format("\\u{{{:02X}}}", code);
                } else {
                    text += character;
                }
            }
        }
    }
    text += '"';
    return text;
}

CaseDescription::CaseDescription(std::string_view caseName) : text_(caseName) {}

CaseDescription& CaseDescription::rendered(std::string_view label, std::string_view text) {
    text_ += hasPayload_ ? ", " : "(";
    hasPayload_ = true;
    if (!label.empty()) {
        text_ += label;
        text_ += ": ";
    }
    text_ += text;
    return *this;
}

CaseDescription& CaseDescription::string(std::string_view label, std::string_view value) {
    return rendered(label, quoted(value));
}

CaseDescription& CaseDescription::integer(std::string_view label, std::int64_t value) {
    return rendered(label, std::to_string(value));
}

CaseDescription& CaseDescription::unsignedInteger(std::string_view label, std::uint64_t value) {
    return rendered(label, std::to_string(value));
}

CaseDescription& CaseDescription::boolean(std::string_view label, bool value) {
    return rendered(label, value ? "true" : "false");
}

CaseDescription& CaseDescription::real(std::string_view label, double value) {
    return rendered(label, describe(value));
}

std::string CaseDescription::str() const {
    return hasPayload_ ? text_ + ")" : text_;
}

}  // namespace screenweaver::text
