#include "Platform/X11/EDIDIdentity.hpp"

#include <algorithm>
#include <array>

namespace screenweaver::platform::x11 {
namespace {

constexpr std::size_t baseBlockLength = 128;
constexpr std::array<std::uint8_t, 8> header{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};

}  // namespace

std::string EDIDIdentity::manufacturer() const {
    std::string letters;
    for (const int shift : {10, 5, 0}) {
        const int letter = (manufacturerID >> shift) & 0x1F;
        letters += letter >= 1 && letter <= 26 ? static_cast<char>('A' + letter - 1) : '?';
    }
    return letters;
}

std::optional<EDIDIdentity> EDIDIdentity::parse(std::span<const std::uint8_t> edid) {
    if (edid.size() < baseBlockLength || !std::equal(header.begin(), header.end(), edid.begin())) {
        return std::nullopt;
    }
    return EDIDIdentity{
        .manufacturerID = static_cast<std::uint16_t>((edid[8] << 8) | edid[9]),
        .productCode = static_cast<std::uint16_t>(edid[10] | (edid[11] << 8)),
        .serialNumber = static_cast<std::uint32_t>(edid[12]) | (static_cast<std::uint32_t>(edid[13]) << 8) |
                        (static_cast<std::uint32_t>(edid[14]) << 16) |
                        (static_cast<std::uint32_t>(edid[15]) << 24),
    };
}

}  // namespace screenweaver::platform::x11
