#pragma once

#include <functional>
#include <string>
#include <variant>

#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// The stable name of a display, which survives reconnections and restarts where a display ID does
/// not: one of this product's virtual displays by the UUID of its specification, or a physical
/// display by the text of its ColorSync UUID (kept exactly as the provider produced it, with no
/// normalisation of case or format).
struct DisplayRef {
    /// `virtual(UUID)`: a virtual display, named by its specification's `id`.
    struct Virtual {
        UUID id;
        friend bool operator==(const Virtual&, const Virtual&) = default;
    };
    /// `physical(colorSyncUUID:)`: any live display, named by its ColorSync UUID text.
    struct Physical {
        std::string colorSyncUUID;
        friend bool operator==(const Physical&, const Physical&) = default;
    };

    std::variant<Virtual, Physical> value;

    static DisplayRef virtualDisplay(const UUID& id) { return DisplayRef{Virtual{id}}; }
    static DisplayRef physical(std::string colorSyncUUID) {
        return DisplayRef{Physical{std::move(colorSyncUUID)}};
    }

    [[nodiscard]] const Virtual* asVirtual() const { return std::get_if<Virtual>(&value); }
    [[nodiscard]] const Physical* asPhysical() const { return std::get_if<Physical>(&value); }

    /// The textual form: `virtual(12345678-9ABC-DEF0-1234-56789ABCDEF0)` or
    /// `physical(colorSyncUUID: "1552-4-0")`.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const DisplayRef&, const DisplayRef&) = default;
};

}  // namespace screenweaver

/// Hashes a case marker (0 for virtual, 1 for physical), then the payload.
template <>
struct std::hash<screenweaver::DisplayRef> {
    std::size_t operator()(const screenweaver::DisplayRef& ref) const noexcept;
};
