#pragma once

#include <cstdint>
#include <optional>

#include "CoreTypes/Model/DisplayEDIDSummary.hpp"

namespace screenweaver {

/// Reads the identification of a display. A display that cannot be read gives nothing; there is
/// no other failure.
class DisplayEDIDReading {
public:
    virtual ~DisplayEDIDReading() = default;

    [[nodiscard]] virtual std::optional<DisplayEDIDSummary> edidSummary(std::uint32_t displayID) const = 0;

protected:
    DisplayEDIDReading() = default;
    DisplayEDIDReading(const DisplayEDIDReading&) = default;
    DisplayEDIDReading& operator=(const DisplayEDIDReading&) = default;
};

/// The reader where EDID data cannot be obtained: nothing, for every display.
class UnavailableEDIDReader final : public DisplayEDIDReading {
public:
    UnavailableEDIDReader() = default;

    [[nodiscard]] std::optional<DisplayEDIDSummary> edidSummary(std::uint32_t /*displayID*/) const override {
        return std::nullopt;
    }
};

}  // namespace screenweaver
