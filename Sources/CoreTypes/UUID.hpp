#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace screenweaver {

/// A universally unique identifier: 16 bytes, compared and hashed by those bytes, written in the
/// canonical upper-case 8-4-4-4-12 form (`E621E1F8-C36C-495A-93FC-0C247A3E6E5F`).
class UUID {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    /// The all-zero UUID.
    constexpr UUID() = default;
    constexpr explicit UUID(const Bytes& bytes) : bytes_(bytes) {}

    /// Parses the canonical text form: exactly 36 characters, hyphens at offsets 8, 13, 18 and 23,
    /// hexadecimal digits of either case everywhere else. Anything else (braces, blanks, missing
    /// hyphens, another length) gives nothing.
    static std::optional<UUID> parse(std::string_view text);
    /// `parse` into `result`, left as it was when `text` is not a UUID: for readers of many UUIDs,
    /// which write each where it belongs.
    static bool parse(std::string_view text, UUID& result);

    /// A new random (version 4) UUID from the system's random source.
    static UUID random();

    /// The canonical upper-case text.
    [[nodiscard]] std::string uuidString() const;

    /// The canonical upper-case text as 36 characters, without allocating (for writers that
    /// copy it straight into their output).
    [[nodiscard]] std::array<char, 36> canonicalCharacters() const;

    /// The bytes in canonical order: the order in which they appear in the text form.
    [[nodiscard]] const Bytes& bytes() const { return bytes_; }

    friend constexpr bool operator==(const UUID&, const UUID&) = default;
    /// Byte order; gives sets and sorted output a stable order.
    friend constexpr bool operator<(const UUID& lhs, const UUID& rhs) { return lhs.bytes_ < rhs.bytes_; }

private:
    Bytes bytes_{};
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::UUID> {
    std::size_t operator()(const screenweaver::UUID& uuid) const noexcept;
};
