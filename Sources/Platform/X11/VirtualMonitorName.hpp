#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/UUID.hpp"

namespace screenweaver::platform::x11 {

/// The name of a monitor this system made on an X server. A monitor has nothing but a name to
/// carry what the window server reports of a virtual display on a Mac, so the name carries it:
///
///     SCREENWEAVER:00005357:00000001:4E7153E5:5E1F7E57-0000-4000-8000-000000000001:00A00001
///                  vendor   product  serial   VirtualDisplaySpec's UUID             owner
///
/// vendor, product and serial numbers as eight upper-case hexadecimal digits each, the UUID of the
/// VirtualDisplaySpec in its canonical upper-case form, and the owner: the window (its X resource
/// ID, eight hexadecimal digits) whose life is the monitor's. The window belongs to the connection
/// that made the monitor, so when that process ends, however it ends, the server destroys the
/// window, and the monitor left without an owner is an orphan to remove.
struct VirtualMonitorName {
    std::uint32_t vendorID = 0;
    std::uint32_t productID = 0;
    std::uint32_t serialNumber = 0;
    UUID specID;
    std::uint32_t owner = 0;

    /// The name's text, as the monitor's atom holds it.
    [[nodiscard]] std::string text() const;

    /// The parts of a name in exactly the form above (hexadecimal digits of either case); nothing
    /// for any other monitor's name.
    [[nodiscard]] static std::optional<VirtualMonitorName> parse(std::string_view text);

    friend bool operator==(const VirtualMonitorName&, const VirtualMonitorName&) = default;
};

}  // namespace screenweaver::platform::x11
