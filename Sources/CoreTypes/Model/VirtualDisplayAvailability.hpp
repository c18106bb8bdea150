#pragma once

#include <string>
#include <utility>
#include <variant>

namespace screenweaver {

/// Whether virtual displays can be created on this system, and if not, why (for logs and the
/// control protocol).
struct VirtualDisplayAvailability {
    /// `available`
    struct Available {
        friend bool operator==(const Available&, const Available&) = default;
    };
    /// `unavailable(reason:)`
    struct Unavailable {
        std::string reason{};
        friend bool operator==(const Unavailable&, const Unavailable&) = default;
    };

    std::variant<Available, Unavailable> value;

    static VirtualDisplayAvailability available() { return {Available{}}; }
    static VirtualDisplayAvailability unavailable(std::string reason) {
        return {Unavailable{std::move(reason)}};
    }

    [[nodiscard]] bool isAvailable() const { return std::holds_alternative<Available>(value); }
    [[nodiscard]] const Unavailable* asUnavailable() const { return std::get_if<Unavailable>(&value); }

    friend bool operator==(const VirtualDisplayAvailability&, const VirtualDisplayAvailability&) = default;
};

}  // namespace screenweaver
