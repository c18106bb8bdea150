#include "CoreTypes/Model/GroupEngineState.hpp"

#include "CoreTypes/Overloaded.hpp"

namespace screenweaver {

std::optional<UUID> GroupEngineState::activeGroupID() const {
    return std::visit(Overloaded{
                          [](const Idle&) -> std::optional<UUID> { return std::nullopt; },
                          [](const Failed& state) -> std::optional<UUID> { return state.groupID; },
                          [](const auto& state) -> std::optional<UUID> { return state.groupID; },
                      },
                      value);
}

}  // namespace screenweaver
