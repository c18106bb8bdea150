#include "CoreTypes/UUID.hpp"

#include <bit>
#include <cstring>
#include <uuid/uuid.h>

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

namespace {

// Eight hexadecimal digits of either case, first one lowest, as the four bytes they spell, first
// one lowest. A byte at a time in parallel within one word: a byte of 0x80 or more, or one
// outside the three ranges of digits, leaves its high bit clear in what is added to `valid`,
// which the caller compares once for all the digits of a UUID.
inline std::uint32_t decodeEightDigits(std::uint64_t word, std::uint64_t& valid) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highs = ones * 0x80;
    const auto atLeast = [word](std::uint64_t lowest) { return word + ones * (0x80 - lowest); };
    const std::uint64_t digits = atLeast('0') & ~atLeast('9' + 1);
    const std::uint64_t upper = atLeast('A') & ~atLeast('F' + 1);
    const std::uint64_t lower = atLeast('a') & ~atLeast('f' + 1);
    valid &= (digits | upper | lower) & ~word & highs;
    // '0'-'9' keep their low four bits; a letter has bit 6 set and gets 9 more.
    const std::uint64_t values = (word & (ones * 0x0F)) + ((word >> 6U) & ones) * 9;
    // Each pair of digits into one byte, in the low byte of its 16-bit lane, then the four lanes'
    // bytes side by side.
    const std::uint64_t pairs =
        ((values & 0x00FF00FF00FF00FFULL) << 4U) | ((values >> 8U) & 0x00FF00FF00FF00FFULL);
    const std::uint64_t halves = (pairs | (pairs >> 8U)) & 0x0000FFFF0000FFFFULL;
    return static_cast<std::uint32_t>(halves | (halves >> 16U));
}

// The `Word`-sized run of characters at `text` as the low bytes of a word, first character
// lowest: one load.
template <class Word>
std::uint64_t characters(const char* text) {
    Word word = 0;
    std::memcpy(&word, text, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        word = std::byteswap(word);
    }
    return word;
}

}  // namespace

std::optional<UUID> UUID::parse(std::string_view text) {
    UUID result;
    if (!parse(text, result)) {
        return std::nullopt;
    }
    return result;
}

bool UUID::parse(std::string_view text, UUID& result) {
    constexpr std::size_t canonicalLength = 36;
    if (text.size() != canonicalLength || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-') {
        return false;
    }
    // Converted here rather than by libuuid: documents hold thousands of UUIDs. The 32 digits
    // stand in four runs of eight once the hyphens are taken out.
    const char* characterAt = text.data();
    constexpr std::uint64_t highs = 0x8080808080808080ULL;
    std::uint64_t valid = highs;
    const std::uint32_t first = decodeEightDigits(characters<std::uint64_t>(characterAt), valid);
    const std::uint32_t second = decodeEightDigits(
        characters<std::uint32_t>(characterAt + 9) | characters<std::uint32_t>(characterAt + 14) << 32U,
        valid);
    const std::uint32_t third = decodeEightDigits(
        characters<std::uint32_t>(characterAt + 19) | characters<std::uint32_t>(characterAt + 24) << 32U,
        valid);
    const std::uint32_t fourth = decodeEightDigits(characters<std::uint64_t>(characterAt + 28), valid);
    if (valid != highs) {
        return false;
    }
    // The sixteen bytes as two words in memory order, put together in registers: bytes stored
    // piecemeal and then read back as a whole would wait for every store to land.
    std::array<std::uint64_t, 2> words{first | std::uint64_t{second} << 32U,
                                       third | std::uint64_t{fourth} << 32U};
    if constexpr (std::endian::native == std::endian::big) {
        words = {std::byteswap(words[0]), std::byteswap(words[1])};
    }
    result.bytes_ = std::bit_cast<Bytes>(words);
    return true;
}

UUID UUID::random() {
    uuid_t generated{};
    uuid_generate_random(generated);
    Bytes bytes{};
    std::memcpy(bytes.data(), generated, bytes.size());
    return UUID{bytes};
}

std::string UUID::uuidString() const {
    const auto characters = canonicalCharacters();
    return std::string{characters.data(), characters.size()};
}

std::array<char, 36> UUID::canonicalCharacters() const {
    constexpr std::array<char, 16> digits{'0', '1', '2', '3', '4', '5', '6', '7',
                                          '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
    std::array<char, 36> text{};
    std::size_t position = 0;
    for (std::size_t index = 0; index < bytes_.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10) {
            text[position++] = '-';
        }
        text[position++] = digits[bytes_[index] >> 4U];
        text[position++] = digits[bytes_[index] & 0x0FU];
    }
    return text;
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::UUID>::operator()(const screenweaver::UUID& uuid) const noexcept {
    // The two halves of the 16 bytes, as two words.
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    std::memcpy(&high, uuid.bytes().data(), sizeof high);
    std::memcpy(&low, uuid.bytes().data() + sizeof high, sizeof low);
    return screenweaver::hashFields(high, low);
}
