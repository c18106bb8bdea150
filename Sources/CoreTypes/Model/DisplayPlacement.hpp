#pragma once

#include <cstdint>
#include <functional>

#include "CoreTypes/Model/Geometry.hpp"

namespace screenweaver {

/// The top-left corner to give a display, in global display coordinates.
struct DisplayPlacement {
    std::uint32_t displayID = 0;
    Point origin{};

    friend bool operator==(const DisplayPlacement&, const DisplayPlacement&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::DisplayPlacement> {
    std::size_t operator()(const screenweaver::DisplayPlacement& placement) const noexcept;
};
