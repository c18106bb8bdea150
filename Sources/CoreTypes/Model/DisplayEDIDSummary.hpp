#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace screenweaver {

/// The compact identification of one display: maker, model and unit, date of manufacture and
/// native resolution.
struct DisplayEDIDSummary {
    /// The three-letter manufacturer (PNP) identifier.
    std::optional<std::string> manufacturerCode{};
    std::uint32_t vendorNumber = 0;
    std::uint32_t modelNumber = 0;
    std::uint32_t serialNumber = 0;
    /// From the display's name descriptor.
    std::optional<std::string> productName{};
    std::optional<std::int64_t> weekOfManufacture{};
    std::optional<std::int64_t> yearOfManufacture{};
    /// Native (preferred) size in pixels.
    std::optional<std::int64_t> nativePixelWidth{};
    std::optional<std::int64_t> nativePixelHeight{};

    friend bool operator==(const DisplayEDIDSummary&, const DisplayEDIDSummary&) = default;
};

}  // namespace screenweaver
