#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/Coding/EncodingError.hpp"

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
    void beginObject();
    void endObject();
    void beginArray();
    void endArray();

    /// Writes a member's key; the next call writes its value. Keys are the coder's own names and
    /// are written without escaping.
    void key(std::string_view name);

    /// A string with `"`, `\` and control characters escaped; everything else, `/` and non-ASCII
    /// text included, as it is.
    void string(std::string_view value);
    void integer(std::int64_t value);
    void unsignedInteger(std::uint64_t value);
    /// The shortest text that reads back as the same double, without a trailing ".0" (`60`,
    /// `59.94`, `-0`, `1e+16`).
    void number(double value);
    void boolean(bool value);
    void null();

    /// Records a value that cannot be written; the first one recorded is what `finish` reports.
    void fail(EncodingError error);

    [[nodiscard]] std::expected<std::string, EncodingError> finish() &&;

private:
    // Room for `count` more characters; the pointer to write them at. `commit` then marks what
    // was written. The text grows in place, without a copy per value.
    char* reserve(std::size_t count) {
        if (text_.size() - size_ < count) {
            grow(count);
        }
        return text_.data() + size_;
    }
    void grow(std::size_t count);
    void commit(const char* end) { size_ = static_cast<std::size_t>(end - text_.data()); }
    // Writes `text` as it is, after a comma if one is due.
    void raw(std::string_view text);

    // The first `size_` characters are the text; the rest is room to grow into.
    std::string text_;
    std::size_t size_ = 0;
    // A comma goes before the next key or element.
    bool needsComma_ = false;
    std::optional<EncodingError> error_;
};

}  // namespace screenweaver
