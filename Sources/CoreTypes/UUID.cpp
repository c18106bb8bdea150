#include "CoreTypes/UUID.hpp"

#include <cstring>
#include <uuid/uuid.h>

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

namespace {

bool isHexDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

}  // namespace

std::optional<UUID> UUID::parse(std::string_view text) {
    constexpr std::size_t canonicalLength = 36;
    if (text.size() != canonicalLength) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < canonicalLength; ++index) {
        const bool hyphenPlace = index == 8 || index == 13 || index == 18 || index == 23;
        if (hyphenPlace ? text[index] != '-' : !isHexDigit(text[index])) {
            return std::nullopt;
        }
    }
    // The form has been checked above; libuuid only converts it.
    std::array<char, canonicalLength + 1> terminated{};
    std::memcpy(terminated.data(), text.data(), canonicalLength);
    uuid_t parsed{};
    if (uuid_parse(terminated.data(), parsed) != 0) {
        return std::nullopt;
    }
    Bytes bytes{};
    std::memcpy(bytes.data(), parsed, bytes.size());
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
    uuid_t raw{};
    std::memcpy(raw, bytes_.data(), bytes_.size());
    std::array<char, 37> text{};
    uuid_unparse_upper(raw, text.data());
    return std::string{text.data(), 36};
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::UUID>::operator()(const screenweaver::UUID& uuid) const noexcept {
    screenweaver::Hasher hasher;
    for (const auto byte : uuid.bytes()) {
        hasher.combine(byte);
    }
    return hasher.finalize();
}
