#include "CoreTypes/UUID.hpp"

#include <cstring>
#include <uuid/uuid.h>

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

namespace {

// The value of each hexadecimal digit of either case; -1 for every other character.
constexpr std::array<std::int8_t, 256> hexValues = [] {
    std::array<std::int8_t, 256> table{};
    table.fill(-1);
    for (std::size_t digit = 0; digit < 10; ++digit) {
        table[std::size_t{'0'} + digit] = static_cast<std::int8_t>(digit);
    }
    for (std::size_t digit = 0; digit < 6; ++digit) {
        table[std::size_t{'a'} + digit] = static_cast<std::int8_t>(10 + digit);
        table[std::size_t{'A'} + digit] = static_cast<std::int8_t>(10 + digit);
    }
    return table;
}();

int hexValue(char character) {
    return hexValues[static_cast<unsigned char>(character)];
}

}  // namespace

std::optional<UUID> UUID::parse(std::string_view text) {
    constexpr std::size_t canonicalLength = 36;
    if (text.size() != canonicalLength) {
        return std::nullopt;
    }
    // Converted here rather than by libuuid: documents hold thousands of UUIDs, and the form is
    // checked digit by digit anyway.
    Bytes bytes{};
    std::size_t byteIndex = 0;
    for (std::size_t index = 0; index < canonicalLength;) {
        if (index == 8 || index == 13 || index == 18 || index == 23) {
            if (text[index] != '-') {
                return std::nullopt;
            }
            ++index;
            continue;
        }
        const int high = hexValue(text[index]);
        const int low = hexValue(text[index + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes[byteIndex++] = static_cast<std::uint8_t>(high * 16 + low);
        index += 2;
    }
    return UUID{bytes};
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
