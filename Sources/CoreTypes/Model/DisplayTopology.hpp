#pragma once

#include <optional>
#include <vector>

#include "CoreTypes/Model/LiveDisplay.hpp"

namespace screenweaver {

/// The attached displays, in the order the provider enumerated them.
struct DisplayTopology {
    std::vector<LiveDisplay> displays{};

    /// The first display flagged main, in array order; absent when none is.
    [[nodiscard]] std::optional<LiveDisplay> main() const {
        for (const auto& display : displays) {
            if (display.isMain) {
                return display;
            }
        }
        return std::nullopt;
    }

    friend bool operator==(const DisplayTopology&, const DisplayTopology&) = default;
};

}  // namespace screenweaver

template <>
struct std::hash<screenweaver::DisplayTopology> {
    std::size_t operator()(const screenweaver::DisplayTopology& topology) const noexcept;
};
