#include "Platform/X11/VirtualMonitorName.hpp"

#include <charconv>
#include <fmt/format.h>

namespace screenweaver::platform::x11 {
namespace {

constexpr std::string_view prefix = "SCREENWEAVER:";
constexpr std::size_t numberLength = 8;
constexpr std::size_t uuidLength = 36;

// Eight hexadecimal digits and nothing else.
std::optional<std::uint32_t> number(std::string_view digits) {
    if (digits.size() != numberLength) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

std::string VirtualMonitorName::text() const {
    return fmt::format("{}{:08X}:{:08X}:{:08X}:{}:{:08X}", prefix, vendorID, productID, serialNumber,
                       specID.uuidString(), owner);
}

std::optional<VirtualMonitorName> VirtualMonitorName::parse(std::string_view text) {
    constexpr std::size_t length = prefix.size() + 3 * (numberLength + 1) + uuidLength + 1 + numberLength;
    if (text.size() != length || !text.starts_with(prefix)) {
        return std::nullopt;
    }
    std::string_view rest = text.substr(prefix.size());
    const auto field = [&rest](std::size_t size) {
        const std::string_view value = rest.substr(0, size);
        rest.remove_prefix(std::min(rest.size(), size + 1));
        return value;
    };
    const std::size_t separators[] = {numberLength, 2 * numberLength + 1, 3 * numberLength + 2,
                                      3 * numberLength + 3 + uuidLength};
    for (const std::size_t at : separators) {
        if (rest[at] != ':') {
            return std::nullopt;
        }
    }
    const auto vendor = number(field(numberLength));
    const auto product = number(field(numberLength));
    const auto serial = number(field(numberLength));
    const auto uuid = UUID::parse(field(uuidLength));
    const auto owner = number(field(numberLength));
    if (!vendor || !product || !serial || !uuid || !owner) {
        return std::nullopt;
    }
    return VirtualMonitorName{.vendorID = *vendor,
                              .productID = *product,
                              .serialNumber = *serial,
                              .specID = *uuid,
                              .owner = *owner};
}

}  // namespace screenweaver::platform::x11
