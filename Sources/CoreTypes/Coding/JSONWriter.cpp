#include "CoreTypes/Coding/JSONWriter.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace {

// Integral doubles up to 2^53 are written as plain integers; above it the text takes the
// exponential form, as the double's description does.
constexpr double largestPlainMagnitude = 9007199254740992.0;

// Below this magnitude the first significant digit stands after the fourth decimal place, and the
// text takes the exponential form.
constexpr double smallestPlainMagnitude = 1e-4;

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

// The longest number: a negative 64-bit integer, or a double in its shortest exponential form.
constexpr std::size_t longestNumber = 32;

// Whether any of the eight characters of `word` needs an escape: a control character, `"` or `\`.
bool needsEscape(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highs = ones * 0x80;
    const std::uint64_t quotes = word ^ (ones * '"');
    const std::uint64_t backslashes = word ^ (ones * '\\');
    // A byte's high bit is set where it was below 0x20 (bytes of 0x80 and more excluded), or zero.
    const std::uint64_t controls = (word - ones * 0x20) & ~word & highs;
    return (controls | ((quotes - ones) & ~quotes & highs) | ((backslashes - ones) & ~backslashes & highs)) !=
           0;
}

}  // namespace

void JSONWriter::grow(std::size_t count) {
    const std::size_t capacity = std::max(text_.size() * 2, size_ + count + 256);
    // The room is written before it is read, so it is left as it is rather than cleared.
    text_.resize_and_overwrite(capacity, [](char*, std::size_t size) { return size; });
}

void JSONWriter::key(std::string_view name) {
    char* out = reserve(name.size() + 4);
    *out = ',';
    out += needsComma_ ? 1 : 0;
    *out++ = '"';
    std::memcpy(out, name.data(), name.size());
    out += name.size();
    *out++ = '"';
    *out++ = ':';
    commit(out);
    needsComma_ = false;
}

void JSONWriter::string(std::string_view value) {
    char* out = startValue(value.size() * longestEscape + 2);
    *out++ = '"';
    const char* next = value.data();
    const char* end = next + value.size();
    // Eight characters at a time while none of them needs an escape, which is nearly always.
    if constexpr (std::endian::native == std::endian::little) {
        while (end - next >= 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, next, sizeof word);
            if (needsEscape(word)) {
                break;
            }
            std::memcpy(out, &word, sizeof word);
            out += 8;
            next += 8;
        }
    }
    for (; next != end; ++next) {
        const std::string_view escape = escapes[static_cast<unsigned char>(*next)];
        if (escape.empty()) {
            *out++ = *next;
        } else {
            std::memcpy(out, escape.data(), escape.size());
            out += escape.size();
        }
    }
    *out++ = '"';
    commit(out);
}

void JSONWriter::integer(std::int64_t value) {
    char* out = startValue(longestNumber);
    commit(std::to_chars(out, out + longestNumber, value).ptr);
}

void JSONWriter::unsignedInteger(std::uint64_t value) {
    char* out = startValue(longestNumber);
    commit(std::to_chars(out, out + longestNumber, value).ptr);
}

void JSONWriter::number(double value) {
    if (!std::isfinite(value)) {
        fail(EncodingError{"Unable to encode Double." + text::describe(value) + " directly in JSON."});
        null();
        return;
    }
    const double magnitude = std::fabs(value);
    if (value == std::trunc(value) && magnitude <= largestPlainMagnitude) {
        // The common case: an integral value, written as its integer (negative zero as "-0").
        if (value == 0.0 && std::signbit(value)) {
            literal("-0");
            return;
        }
        integer(static_cast<std::int64_t>(value));
        return;
    }
    // The shortest digits that read back as the same double, in the plain form or, beyond the
    // plain range, the exponential one ("1e+16", "1.5e-07").
    const bool exponential = magnitude > largestPlainMagnitude || magnitude < smallestPlainMagnitude;
    char* out = startValue(longestNumber);
    commit(std::to_chars(out, out + longestNumber, value,
                         exponential ? std::chars_format::scientific : std::chars_format::fixed)
               .ptr);
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
