#pragma once

#include <utility>
#include <variant>

#include "CoreTypes/Errors.hpp"

namespace screenweaver {

/// The availability gate's verdict on the private interface, fixed when a manager is made.
struct VirtualDisplayGateOutcome {
    /// `usable(beyondKnownGood:)`
    struct Usable {
        /// The running system is newer than the newest release the interface was validated on.
        bool beyondKnownGood = false;
        friend bool operator==(const Usable&, const Usable&) = default;
    };
    /// `blocked(error)`: virtual displays must not be attempted; the error says why.
    struct Blocked {
        VirtualDisplayError error;
        friend bool operator==(const Blocked&, const Blocked&) = default;
    };

    std::variant<Usable, Blocked> value;

    static VirtualDisplayGateOutcome usable(bool beyondKnownGood) { return {Usable{beyondKnownGood}}; }
    static VirtualDisplayGateOutcome blocked(VirtualDisplayError error) {
        return {Blocked{std::move(error)}};
    }

    [[nodiscard]] const Blocked* asBlocked() const { return std::get_if<Blocked>(&value); }

    friend bool operator==(const VirtualDisplayGateOutcome&, const VirtualDisplayGateOutcome&) = default;
};

}  // namespace screenweaver
