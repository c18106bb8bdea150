#pragma once

#include <cstdint>

namespace screenweaver {

/// Keeps one virtual display on screen for as long as it exists: destroying it releases the
/// display, and the window server removes it. Whoever holds it owns the display.
class RetainedDisplay {
public:
    virtual ~RetainedDisplay() = default;
    RetainedDisplay(const RetainedDisplay&) = delete;
    RetainedDisplay& operator=(const RetainedDisplay&) = delete;

    /// The ID the window server assigned, read once when the display was made; 0 when it assigned
    /// none.
    [[nodiscard]] virtual std::uint32_t displayID() const = 0;

protected:
    RetainedDisplay() = default;
};

}  // namespace screenweaver
