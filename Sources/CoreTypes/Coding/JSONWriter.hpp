#pragma once

#include <cstdint>
#include <cstring>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/Coding/EncodingError.hpp"
#include "CoreTypes/Coding/JSONKey.hpp"

namespace screenweaver {

/// Writes compact JSON text straight into a string, in the order of the calls, with no tree in
/// between. Commas and colons are placed by the writer; callers only open, fill and close.
///
///     JSONWriter writer;
///     writer.beginObject();
///     writer.key("keyCode");
///     writer.unsignedInteger(2);
///     writer.endObject();
///     std::move(writer).finish();  // {"keyCode":2}
///
/// A value JSON cannot carry (NaN, an infinity) makes the writer fail: `finish` then returns the
/// first such error instead of the text.
class JSONWriter {
public:
    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    /// Writes a member's key; the next call writes its value. Keys are the coder's own names and
    /// are written without escaping.
    void key(std::string_view name);
    /// The same for a key known in advance, written in one go.
    void key(const coding::JSONKey& name) {
        char* out = reserve(coding::JSONKey::writtenSize + 1);
        *out = ',';
        out += needsComma_ ? 1 : 0;
        name.write(out);
        commit(out + name.text().size() + 3);
        needsComma_ = false;
    }

    /// A string with `"`, `\` and control characters escaped; everything else, `/` and non-ASCII
    /// text included, as it is.
    void string(std::string_view value);
    void integer(std::int64_t value);
    void unsignedInteger(std::uint64_t value);
    /// The shortest text that reads back as the same double, without a trailing ".0" (`60`,
    /// `59.94`, `-0`, `1e+16`).
    void number(double value);
    void boolean(bool value) { literal(value ? std::string_view{"true"} : std::string_view{"false"}); }
    void null() { literal("null"); }

    /// Records a value that cannot be written; the first one recorded is what `finish` reports.
    void fail(EncodingError error);

    [[nodiscard]] std::expected<std::string, EncodingError> finish() &&;

private:
    // Room for `count` more characters; the pointer to write them at. `commit` then marks what
    // was written. The text grows in place, without a copy per value and without clearing the
    // room it makes.
    char* reserve(std::size_t count) {
        if (text_.size() - size_ < count) {
            grow(count);
        }
        return text_.data() + size_;
    }
    void grow(std::size_t count);
    void commit(const char* end) { size_ = static_cast<std::size_t>(end - text_.data()); }
    // Room for a value of at most `count` characters, after the comma if one is due.
    char* startValue(std::size_t count) {
        char* out = reserve(count + 1);
        *out = ',';
        out += needsComma_ ? 1 : 0;
        needsComma_ = true;
        return out;
    }
    void literal(std::string_view text) {
        char* out = startValue(text.size());
        std::memcpy(out, text.data(), text.size());
        commit(out + text.size());
    }
    void open(char bracket) {
        char* out = startValue(1);
        *out = bracket;
        commit(out + 1);
        needsComma_ = false;
    }
    void close(char bracket) {
        *reserve(1) = bracket;
        ++size_;
        needsComma_ = true;
    }

    // The first `size_` characters are the text; the rest is room to grow into.
    std::string text_;
    std::size_t size_ = 0;
    // A comma goes before the next key or element.
    bool needsComma_ = false;
    std::optional<EncodingError> error_;
};

}  // namespace screenweaver
