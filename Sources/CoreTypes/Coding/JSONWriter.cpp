#include "CoreTypes/Coding/JSONWriter.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace {

// Integral doubles up to 2^53 are written as plain integers; above it the text takes the
// exponential form, as the double's description does.
constexpr double largestPlainMagnitude = 9007199254740992.0;

// The escape of each character that needs one in a JSON string; empty for the others.
constexpr std::array<std::string_view, 256> escapes = [] {
    std::array<std::string_view, 256> table{};
    constexpr std::array<std::string_view, 32> controls{
        "\\u0000", "\\u0001", "\\u0002", "\\u0003", "\\u0004", "\\u0005", "\\u0006", "\\u0007",
        "\\b",     "\\t",     "\\n",     "\\u000b", "\\f",     "\\r",     "\\u000e", "\\u000f",
        "\\u0010", "\\u0011", "\\u0012", "\\u0013", "\\u0014", "\\u0015", "\\u0016", "\\u0017",
        "\\u0018", "\\u0019", "\\u001a", "\\u001b", "\\u001c", "\\u001d", "\\u001e", "\\u001f",
    };
    for (std::size_t code = 0; code < controls.size(); ++code) {
        table[code] = controls[code];
    }
    table[static_cast<unsigned char>('"')] = "\\\"";
    table[static_cast<unsigned char>('\\')] = "\\\\";
    return table;
}();

// The longest escape: "\u001f".
constexpr std::size_t longestEscape = 6;

}  // namespace

void JSONWriter::grow(std::size_t count) {
    text_.resize(std::max(text_.size() * 2, size_ + count + 256));
}

void JSONWriter::raw(std::string_view text) {
    char* out = reserve(text.size() + 1);
    if (needsComma_) {
        *out++ = ',';
    }
    std::memcpy(out, text.data(), text.size());
    commit(out + text.size());
    needsComma_ = true;
}

void JSONWriter::beginObject() {
    raw("{");
    needsComma_ = false;
}

void JSONWriter::endObject() {
    *reserve(1) = '}';
    ++size_;
    needsComma_ = true;
}

void JSONWriter::beginArray() {
    raw("[");
    needsComma_ = false;
}

void JSONWriter::endArray() {
    *reserve(1) = ']';
    ++size_;
    needsComma_ = true;
}

void JSONWriter::key(std::string_view name) {
    char* out = reserve(name.size() + 4);
    if (needsComma_) {
        *out++ = ',';
    }
    *out++ = '"';
    std::memcpy(out, name.data(), name.size());
    out += name.size();
    *out++ = '"';
    *out++ = ':';
    commit(out);
    needsComma_ = false;
}

void JSONWriter::string(std::string_view value) {
    char* out = reserve(value.size() * longestEscape + 3);
    if (needsComma_) {
        *out++ = ',';
    }
    *out++ = '"';
    // Copies runs of ordinary characters in one go; escapes are rare.
    std::size_t runStart = 0;
    for (std::size_t index = 0; index < value.size(); ++index) {
        const std::string_view escape = escapes[static_cast<unsigned char>(value[index])];
        if (!escape.empty()) {
            std::memcpy(out, value.data() + runStart, index - runStart);
            out += index - runStart;
            std::memcpy(out, escape.data(), escape.size());
            out += escape.size();
            runStart = index + 1;
        }
    }
    if (runStart < value.size()) {
        std::memcpy(out, value.data() + runStart, value.size() - runStart);
        out += value.size() - runStart;
    }
    *out++ = '"';
    commit(out);
    needsComma_ = true;
}

void JSONWriter::integer(std::int64_t value) {
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    raw({buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

void JSONWriter::unsignedInteger(std::uint64_t value) {
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    raw({buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

void JSONWriter::number(double value) {
    if (!std::isfinite(value)) {
        fail(EncodingError{"Unable to encode Double." + text::describe(value) + " directly in JSON."});
        raw("null");
        return;
    }
    if (value == std::trunc(value) && std::fabs(value) <= largestPlainMagnitude) {
        // The common case: an integral value, written as its integer (negative zero as "-0").
        if (value == 0.0 && std::signbit(value)) {
            raw("-0");
            return;
        }
        integer(static_cast<std::int64_t>(value));
        return;
    }
    std::string described = text::describe(value);
    if (described.ends_with(".0")) {
        described.resize(described.size() - 2);
    }
    raw(described);
}

void JSONWriter::boolean(bool value) {
    raw(value ? "true" : "false");
}

void JSONWriter::null() {
    raw("null");
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
    text_.resize(size_);
    return std::move(text_);
}

}  // namespace screenweaver
