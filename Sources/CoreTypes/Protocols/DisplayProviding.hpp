#pragma once

#include <cstdint>
#include <expected>
#include <vector>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/LayoutPlan.hpp"
#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// Reads the live display arrangement, lists modes, applies layout plans and publishes changes.
/// Implementations are shared between threads and must be safe to call from several at once.
class DisplayProviding {
public:
    virtual ~DisplayProviding() = default;

    /// The displays attached right now; never blocks for long.
    [[nodiscard]] virtual std::expected<DisplayTopology, DisplayError> snapshot() const = 0;

    /// A new subscription that receives a fresh topology whenever the arrangement has changed.
    /// Destroying the stream ends the subscription.
    [[nodiscard]] virtual AsyncStream<DisplayTopology> changes() const = 0;

    /// The modes the display `displayID` offers; never blocks for long.
    [[nodiscard]] virtual std::expected<std::vector<DisplayModeInfo>, DisplayError> availableModes(
        std::uint32_t displayID) const = 0;

    /// Applies `plan`, waiting for the display system to settle; a stop request ends the waits
    /// early.
    [[nodiscard]] virtual std::expected<void, DisplayError> apply(const LayoutPlan& plan,
                                                                  const StopToken& stop) = 0;

protected:
    DisplayProviding() = default;
    DisplayProviding(const DisplayProviding&) = default;
    DisplayProviding& operator=(const DisplayProviding&) = default;
};

}  // namespace screenweaver
