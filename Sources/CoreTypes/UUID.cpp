#include "CoreTypes/UUID.hpp"

#include <bit>
#include <cstring>
#include <uuid/uuid.h>

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

namespace {

// Eight hexadecimal digits of either case, first one lowest, as the four bytes they spell, first
// one lowest; nothing if any of them is not such a digit. A byte at a time in parallel within one
// word: a byte of 0x80 or more, or one outside the three ranges of digits, leaves its high bit
// clear in `valid`.
std::optional<std::uint32_t> decodeEightDigits(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highs = ones * 0x80;
    const auto atLeast = [word](std::uint64_t lowest) { return word + ones * (0x80 - lowest); };
    const std::uint64_t digits = atLeast('0') & ~atLeast('9' + 1);
    const std::uint64_t upper = atLeast('A') & ~atLeast('F' + 1);
    const std::uint64_t lower = atLeast('a') & ~atLeast('f' + 1);
    const std::uint64_t valid = (digits | upper | lower) & ~word & highs;
    if (valid != highs) {
        return std::nullopt;
    }
    // '0'-'9' keep their low four bits; a letter has bit 6 set and gets 9 more.
    const std::uint64_t values = (word & (ones * 0x0F)) + ((word >> 6U) & ones) * 9;
    // Each pair of digits into one byte, in the low byte of its 16-bit lane, then the four lanes'
    // bytes side by side.
    const std::uint64_t pairs =
        ((values & 0x00FF00FF00FF00FFULL) << 4U) | ((values >> 8U) & 0x00FF00FF00FF00FFULL);
    const std::uint64_t halves = (pairs | (pairs >> 8U)) & 0x0000FFFF0000FFFFULL;
    return static_cast<std::uint32_t>(halves | (halves >> 16U));
}

// `count` characters of `text` as the low bytes of a word, first character lowest.
std::uint64_t characters(const char* text, std::size_t count) {
    std::uint64_t word = 0;
    for (std::size_t index = 0; index < count; ++index) {
        word |= std::uint64_t{static_cast<unsigned char>(text[index])} << (8 * index);
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
    const auto first = decodeEightDigits(characters(characterAt, 8));
    const auto second =
        decodeEightDigits(characters(characterAt + 9, 4) | characters(characterAt + 14, 4) << 32U);
    const auto third =
        decodeEightDigits(characters(characterAt + 19, 4) | characters(characterAt + 24, 4) << 32U);
    const auto fourth = decodeEightDigits(characters(characterAt + 28, 8));
    if (!first || !second || !third || !fourth) {
        return false;
    }
    // The sixteen bytes as two words in memory order, put together in registers: bytes stored
    // piecemeal and then read back as a whole would wait for every store to land.
    std::array<std::uint64_t, 2> words{*first | std::uint64_t{*second} << 32U,
                                       *third | std::uint64_t{*fourth} << 32U};
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
