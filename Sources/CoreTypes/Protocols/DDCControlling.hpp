#pragma once

#include <cstdint>
#include <expected>

#include "CoreTypes/DDCControl.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DDCCapabilities.hpp"
#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// Monitor control over DDC/CI. Every operation talks to the monitor and blocks until it
/// answers; a stop request ends the wait early. Failures are `DDCError` cases.
class DDCControlling {
public:
    virtual ~DDCControlling() = default;

    /// What the monitor of display `displayID` offers.
    [[nodiscard]] virtual std::expected<DDCCapabilities, DDCError> capabilities(std::uint32_t displayID,
                                                                                const StopToken& stop) = 0;

    /// The current value of `control` (in the monitor's own units).
    [[nodiscard]] virtual std::expected<std::uint16_t, DDCError> readValue(DDCControl control,
                                                                           std::uint32_t displayID,
                                                                           const StopToken& stop) = 0;

    /// Sets `control` to `value` (in the monitor's own units).
    [[nodiscard]] virtual std::expected<void, DDCError> writeValue(DDCControl control, std::uint16_t value,
                                                                   std::uint32_t displayID,
                                                                   const StopToken& stop) = 0;

    /// Sets the brightness in software, `level` from 0 to 1, for a monitor without a brightness
    /// control.
    [[nodiscard]] virtual std::expected<void, DDCError> setSoftwareBrightness(double level,
                                                                              std::uint32_t displayID,
                                                                              const StopToken& stop) = 0;

protected:
    DDCControlling() = default;
    DDCControlling(const DDCControlling&) = default;
    DDCControlling& operator=(const DDCControlling&) = default;
};

}  // namespace screenweaver
