#include "CoreTypes/Coding/JSONWriter.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace {

// Integral doubles up to 2^53 are written as plain integers; above it the text takes the
// exponential form, as the double's description does.
constexpr double largestPlainMagnitude = 9007199254740992.0;

constexpr std::array<char, 16> hexDigits{'0', '1', '2', '3', '4', '5', '6', '7',
                                         '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};

void appendEscaped(std::string& text, char character) {
    switch (character) {
        case '"':
            text += "\\\"";
            return;
        case '\\':
            text += "\\\\";
            return;
        case '\b':
            text += "\\b";
            return;
        case '\f':
            text += "\\f";
            return;
        case '\n':
            text += "\\n";
            return;
        case '\r':
            text += "\\r";
            return;
        case '\t':
            text += "\\t";
            return;
        default: {
            const auto code = static_cast<unsigned char>(character);
            text += "\\u00";
            text += hexDigits[code >> 4U];
            text += hexDigits[code & 0x0FU];
            return;
        }
    }
}

bool needsEscape(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

}  // namespace

void JSONWriter::separate() {
    if (needsComma_) {
        text_ += ',';
    }
}

void JSONWriter::beginObject() {
    separate();
    text_ += '{';
    needsComma_ = false;
}

void JSONWriter::endObject() {
    text_ += '}';
    needsComma_ = true;
}

void JSONWriter::beginArray() {
    separate();
    text_ += '[';
    needsComma_ = false;
}

void JSONWriter::endArray() {
    text_ += ']';
    needsComma_ = true;
}

void JSONWriter::key(std::string_view name) {
    separate();
    text_ += '"';
    text_ += name;
    text_ += "\":";
    needsComma_ = false;
}

void JSONWriter::string(std::string_view value) {
    separate();
    text_ += '"';
    // Copies runs of ordinary characters in one go; escapes are rare.
    std::size_t runStart = 0;
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (needsEscape(value[index])) {
            text_.append(value, runStart, index - runStart);
            appendEscaped(text_, value[index]);
            runStart = index + 1;
        }
    }
    text_.append(value, runStart, value.size() - runStart);
    text_ += '"';
    needsComma_ = true;
}

void JSONWriter::integer(std::int64_t value) {
    separate();
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text_.append(buffer.data(), result.ptr);
    needsComma_ = true;
}

void JSONWriter::unsignedInteger(std::uint64_t value) {
    separate();
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text_.append(buffer.data(), result.ptr);
    needsComma_ = true;
}

void JSONWriter::number(double value) {
    if (!std::isfinite(value)) {
        fail(EncodingError{"Unable to encode Double." + text::describe(value) + " directly in JSON."});
        separate();
        text_ += "null";
        needsComma_ = true;
        return;
    }
    if (value == std::trunc(value) && std::fabs(value) <= largestPlainMagnitude) {
        // The common case: an integral value, written as its integer (negative zero as "-0").
        if (value == 0.0 && std::signbit(value)) {
            separate();
            text_ += "-0";
            needsComma_ = true;
            return;
        }
        integer(static_cast<std::int64_t>(value));
        return;
    }
    std::string described = text::describe(value);
    if (described.ends_with(".0")) {
        described.resize(described.size() - 2);
    }
    separate();
    text_ += described;
    needsComma_ = true;
}

void JSONWriter::boolean(bool value) {
    separate();
    text_ += value ? "true" : "false";
    needsComma_ = true;
}

void JSONWriter::null() {
    separate();
    text_ += "null";
    needsComma_ = true;
}

void JSONWriter::fail(EncodingError error) {
    if (!error_) {
        error_ = std::move(error);
    }
}

std::expected<std::string, EncodingError> JSONWriter::finish() && {
    if (error_) {
        return std::unexpected(std::move(*error_));
    }
    return std::move(text_);
}

}  // namespace screenweaver
