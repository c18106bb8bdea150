#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace screenweaver::coding::text {

/// The characters a number or a literal may be followed by: whitespace and the structural ones.
inline constexpr std::array<bool, 256> endsAToken = [] {
    std::array<bool, 256> table{};
    for (const char character : {' ', '\t', '\n', '\r', ',', ':', '[', ']', '{', '}'}) {
        table[static_cast<unsigned char>(character)] = true;
    }
    return table;
}();

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Every power of ten a double holds exactly.
inline constexpr std::array<double, 23> exactPowersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Whether `text` begins with the characters of `literal` (a string literal of at least eight):
/// a machine word at a time, the last word overlapping the one before, with no call.
template <std::size_t Size>
[[gnu::always_inline]] inline bool startsWith(const char* text, const char (&literal)[Size]) {
    constexpr std::size_t length = Size - 1;
    static_assert(length >= 8, "a word at least");
    const auto word = [](const char* characters) {
        std::uint64_t value = 0;
        std::memcpy(&value, characters, sizeof value);
        return value;
    };
    std::uint64_t difference = word(text + length - 8) ^ word(literal + length - 8);
    for (std::size_t offset = 0; offset + 8 < length; offset += 8) {
        difference |= word(text + offset) ^ word(literal + offset);
    }
    return difference == 0;
}

/// The first `"` or `\` at or after `text`, which the caller knows is there (the string is
/// closed). Sixteen characters at a time on x86-64, eight elsewhere: a document's text is padded,
/// so the last block never reads past its buffer.
inline const char* quoteOrBackslash(const char* text) {
#if defined(__SSE2__)
    const __m128i quote = _mm_set1_epi8('"');
    const __m128i backslash = _mm_set1_epi8('\\');
    for (;; text += 16) {
        const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(
            _mm_or_si128(_mm_cmpeq_epi8(characters, quote), _mm_cmpeq_epi8(characters, backslash))));
        if (found != 0) {
            return text + std::countr_zero(found);
        }
    }
#else
    if constexpr (std::endian::native == std::endian::little) {
        constexpr std::uint64_t ones = 0x0101010101010101ULL;
        constexpr std::uint64_t highs = 0x8080808080808080ULL;
        for (;; text += 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, text, sizeof word);
            const std::uint64_t quotes = word ^ (ones * '"');
            const std::uint64_t backslashes = word ^ (ones * '\\');
            // A byte's high bit is set where it was zero, and possibly in later bytes (a borrow),
            // so the lowest one marks the first match.
            const std::uint64_t found =
                ((quotes - ones) & ~quotes & highs) | ((backslashes - ones) & ~backslashes & highs);
            if (found != 0) {
                return text + std::countr_zero(found) / 8;
            }
        }
    } else {
        while (*text != '"' && *text != '\\') {
            ++text;
        }
        return text;
    }
#endif
}

}  // namespace screenweaver::coding::text
