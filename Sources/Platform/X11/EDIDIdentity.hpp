#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace screenweaver::platform::x11 {

/// Who made a display and which one it is, as its EDID base block says (bytes 8 to 15): the numbers
/// a Mac reports as a display's vendor, model and serial number.
struct EDIDIdentity {
    /// The manufacturer's three-letter code packed in 16 bits, read big-endian ("APP" is 0x0610).
    std::uint16_t manufacturerID = 0;
    /// The manufacturer's product code, read little-endian.
    std::uint16_t productCode = 0;
    /// The serial number, read little-endian; 0 when the manufacturer gave none.
    std::uint32_t serialNumber = 0;

    /// The three letters of `manufacturerID` ("DEL"); a letter outside A to Z reads "?".
    [[nodiscard]] std::string manufacturer() const;

    /// The identity of an EDID: at least the 128 bytes of a base block beginning with the fixed
    /// header 00 FF FF FF FF FF FF 00. Anything else (a short or damaged block) gives nothing. The
    /// checksum is not held against it: displays with a wrong one are common and still say who
    /// they are.
    [[nodiscard]] static std::optional<EDIDIdentity> parse(std::span<const std::uint8_t> edid);

    friend bool operator==(const EDIDIdentity&, const EDIDIdentity&) = default;
};

}  // namespace screenweaver::platform::x11
