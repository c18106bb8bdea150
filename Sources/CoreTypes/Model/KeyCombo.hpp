#pragma once

#include <cstdint>
#include <functional>

namespace screenweaver {

/// A key combination for a global hot key.
struct KeyCombo {
    /// Virtual key code (2 is the D key of the US layout).
    std::uint32_t keyCode = 0;
    /// Modifier mask in the hot-key service's layout: command 0x0100, shift 0x0200, option 0x0800,
    /// control 0x1000.
    std::uint32_t modifiers = 0;

    friend bool operator==(const KeyCombo&, const KeyCombo&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::KeyCombo> {
    std::size_t operator()(const screenweaver::KeyCombo& combo) const noexcept;
};
