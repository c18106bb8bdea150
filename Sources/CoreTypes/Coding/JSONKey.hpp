#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace screenweaver::coding {

/// A key of a JSON object as it stands in a document, ready to be compared with the document's
/// text a machine word at a time, and to be written in one go.
class JSONKey {
public:
    /// The longest key a record may have.
    static constexpr std::size_t maximumLength = 31;
    /// What `write` writes: the key in quotes and its colon, then padding.
    static constexpr std::size_t writtenSize = 40;

    constexpr JSONKey() = default;
    constexpr explicit JSONKey(std::string_view text) : text_(text) {
        if (text.size() > maximumLength) {
            std::abort();  // in a constant expression, a compile error
        }
        std::array<char, wordCount * 8> bytes{};
        std::array<char, wordCount * 8> mask{};
        for (std::size_t index = 0; index <= text.size(); ++index) {
            bytes[index] = index < text.size() ? text[index] : '"';
            mask[index] = static_cast<char>(0xFF);
        }
        for (std::size_t word = 0; word < wordCount; ++word) {
            pattern_[word] = std::bit_cast<std::uint64_t>(slice(bytes, word));
            mask_[word] = std::bit_cast<std::uint64_t>(slice(mask, word));
        }
        words_ = static_cast<std::uint8_t>(text.size() / 8 + 1);
        written_[0] = '"';
        for (std::size_t index = 0; index < text.size(); ++index) {
            written_[index + 1] = text[index];
        }
        written_[text.size() + 1] = '"';
        written_[text.size() + 2] = ':';
    }

    [[nodiscard]] constexpr std::string_view text() const { return text_; }

    /// Whether the key text starting at `raw` (just after its opening quote, escapes not yet
    /// undone) is exactly this key. Reads up to 32 bytes from `raw`, which the padding after a
    /// document's text always has room for.
    [[nodiscard]] bool matches(const char* raw) const {
        for (std::size_t word = 0; word < words_; ++word) {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, raw + word * 8, sizeof bytes);
            if ((bytes & mask_[word]) != pattern_[word]) {
                return false;
            }
        }
        return true;
    }

    /// Writes `"key":` at `out`, followed by padding up to `writtenSize` characters, which the
    /// writer has made room for and overwrites next.
    void write(char* out) const { std::memcpy(out, written_.data(), writtenSize); }

private:
    static constexpr std::size_t wordCount = (maximumLength + 1) / 8;

    static constexpr std::array<char, 8> slice(const std::array<char, wordCount * 8>& bytes,
                                               std::size_t word) {
        std::array<char, 8> part{};
        for (std::size_t index = 0; index < 8; ++index) {
            part[index] = bytes[word * 8 + index];
        }
        return part;
    }

    std::string_view text_;
    std::array<std::uint64_t, wordCount> pattern_{};
    std::array<std::uint64_t, wordCount> mask_{};
    std::array<char, writtenSize> written_{};
    std::uint8_t words_ = 0;
};

}  // namespace screenweaver::coding
