#pragma once

#include <expected>
#include <optional>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayGroup.hpp"
#include "CoreTypes/Model/GroupEngineState.hpp"
#include "CoreTypes/StopToken.hpp"
#include "CoreTypes/UUID.hpp"

namespace screenweaver {

/// The front of the group engine. The operations block until the engine is done and a stop
/// request ends their waits early; failures are `GroupActivationError` cases.
class GroupActivating {
public:
    virtual ~GroupActivating() = default;

    /// The engine's state right now.
    [[nodiscard]] virtual GroupEngineState state() const = 0;

    /// A new subscription to the engine's states, one element per change.
    [[nodiscard]] virtual AsyncStream<GroupEngineState> stateChanges() const = 0;

    /// Activates the group `groupID`, releasing the previously active one's displays.
    [[nodiscard]] virtual std::expected<void, GroupActivationError> activate(const UUID& groupID,
                                                                             const StopToken& stop) = 0;

    /// Deactivates the active group, releasing its virtual displays.
    [[nodiscard]] virtual std::expected<void, GroupActivationError> deactivate(const StopToken& stop) = 0;

    /// Applies the active group's arrangement again (after the displays changed under it).
    [[nodiscard]] virtual std::expected<void, GroupActivationError> reapplyActiveGroup(
        const StopToken& stop) = 0;

    /// Captures the current arrangement into the group `groupID`, or into a new group when none is
    /// named, and returns the group as saved.
    [[nodiscard]] virtual std::expected<DisplayGroup, GroupActivationError> captureCurrentLayout(
        const std::optional<UUID>& groupID, const StopToken& stop) = 0;

    /// Activates the group marked to activate on launch, if there is one.
    [[nodiscard]] virtual std::expected<void, GroupActivationError> activateLaunchGroup(
        const StopToken& stop) = 0;

protected:
    GroupActivating() = default;
    GroupActivating(const GroupActivating&) = default;
    GroupActivating& operator=(const GroupActivating&) = default;
};

}  // namespace screenweaver
