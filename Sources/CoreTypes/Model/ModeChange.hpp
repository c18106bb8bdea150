#pragma once

#include <cstdint>
#include <functional>

#include "CoreTypes/Model/DisplayModeInfo.hpp"

namespace screenweaver {

/// The mode to switch one display to.
struct ModeChange {
    std::uint32_t displayID = 0;
    DisplayModeInfo mode{};

    friend bool operator==(const ModeChange&, const ModeChange&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::ModeChange> {
    std::size_t operator()(const screenweaver::ModeChange& change) const noexcept;
};
