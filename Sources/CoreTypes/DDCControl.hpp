#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace screenweaver {

/// A monitor control reachable over DDC/CI. The raw value is the control's VCP code in the VESA
/// MCCS standard.
enum class DDCControl : std::uint8_t {
    brightness = 0x10,
    contrast = 0x12,
    volume = 0x62,
    inputSource = 0x60,
    powerMode = 0xD6,
};

/// Every control, in declaration order.
inline constexpr std::array<DDCControl, 5> allDDCControls{
    DDCControl::brightness,  DDCControl::contrast,  DDCControl::volume,
    DDCControl::inputSource, DDCControl::powerMode,
};

/// The control with VCP code `code`, or nothing for a code that names none of them.
std::optional<DDCControl> ddcControl(std::uint8_t code);

[[nodiscard]] constexpr std::uint8_t rawValue(DDCControl control) {
    return static_cast<std::uint8_t>(control);
}

/// The case name: `brightness`, `inputSource`, ...
std::string_view caseName(DDCControl control);

}  // namespace screenweaver
