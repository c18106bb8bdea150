#pragma once

#include <expected>

#include "CoreTypes/Errors.hpp"

namespace screenweaver {

/// Puts all displays to sleep. Implementations must be safe to call from several threads.
class DisplaySleeping {
public:
    virtual ~DisplaySleeping() = default;

    [[nodiscard]] virtual std::expected<void, DisplayError> sleepDisplays() = 0;

protected:
    DisplaySleeping() = default;
    DisplaySleeping(const DisplaySleeping&) = default;
    DisplaySleeping& operator=(const DisplaySleeping&) = default;
};

}  // namespace screenweaver
