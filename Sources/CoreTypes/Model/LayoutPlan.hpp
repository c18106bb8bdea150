#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "CoreTypes/Model/DisplayPlacement.hpp"
#include "CoreTypes/Model/ModeChange.hpp"

namespace screenweaver {

/// The changes applied to the live displays in one configuration transaction. Order matters to
/// equality: the same placements in another order make another plan.
struct LayoutPlan {
    std::vector<DisplayPlacement> placements{};
    std::vector<ModeChange> modeChanges{};
    /// Displays to take out of any mirror set.
    std::vector<std::uint32_t> unmirror{};

    friend bool operator==(const LayoutPlan&, const LayoutPlan&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::LayoutPlan> {
    std::size_t operator()(const screenweaver::LayoutPlan& plan) const noexcept;
};
