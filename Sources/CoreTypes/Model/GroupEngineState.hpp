#pragma once

#include <optional>
#include <string>
#include <variant>

#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// Where the group engine stands. The cases that carry a group come in the order of an
/// activation (validating, creating, verifying, arranging, settling, releasingOld, active),
/// followed by rollingBack and failed for one that goes wrong.
struct GroupEngineState {
    struct Idle {
        friend bool operator==(const Idle&, const Idle&) = default;
    };
    struct Validating {
        UUID groupID;
        friend bool operator==(const Validating&, const Validating&) = default;
    };
    struct Creating {
        UUID groupID;
        friend bool operator==(const Creating&, const Creating&) = default;
    };
    struct Verifying {
        UUID groupID;
        friend bool operator==(const Verifying&, const Verifying&) = default;
    };
    struct Arranging {
        UUID groupID;
        friend bool operator==(const Arranging&, const Arranging&) = default;
    };
    struct Settling {
        UUID groupID;
        friend bool operator==(const Settling&, const Settling&) = default;
    };
    struct ReleasingOld {
        UUID groupID;
        friend bool operator==(const ReleasingOld&, const ReleasingOld&) = default;
    };
    struct Active {
        UUID groupID;
        friend bool operator==(const Active&, const Active&) = default;
    };
    struct RollingBack {
        UUID groupID;
        friend bool operator==(const RollingBack&, const RollingBack&) = default;
    };
    /// The last activation failed; the group when it is known.
    struct Failed {
        std::optional<UUID> groupID;
        std::string reason;
        friend bool operator==(const Failed&, const Failed&) = default;
    };

    std::variant<Idle, Validating, Creating, Verifying, Arranging, Settling, ReleasingOld, Active,
                 RollingBack, Failed>
        value;

    static GroupEngineState idle() { return {Idle{}}; }
    static GroupEngineState validating(const UUID& groupID) { return {Validating{groupID}}; }
    static GroupEngineState creating(const UUID& groupID) { return {Creating{groupID}}; }
    static GroupEngineState verifying(const UUID& groupID) { return {Verifying{groupID}}; }
    static GroupEngineState arranging(const UUID& groupID) { return {Arranging{groupID}}; }
    static GroupEngineState settling(const UUID& groupID) { return {Settling{groupID}}; }
    static GroupEngineState releasingOld(const UUID& groupID) { return {ReleasingOld{groupID}}; }
    static GroupEngineState active(const UUID& groupID) { return {Active{groupID}}; }
    static GroupEngineState rollingBack(const UUID& groupID) { return {RollingBack{groupID}}; }
    static GroupEngineState failed(std::optional<UUID> groupID, std::string reason) {
        return {Failed{groupID, std::move(reason)}};
    }

    /// The group the engine is busy with, not only one that finished activating: every case's
    /// group, `failed`'s when it has one, absent for `idle`. Test for `active` itself to know that
    /// a group finished activating.
    [[nodiscard]] std::optional<UUID> activeGroupID() const;

    friend bool operator==(const GroupEngineState&, const GroupEngineState&) = default;
};

}  // namespace screenweaver
