#pragma once

#include <cstdint>
#include <vector>

#include "VirtualDisplayKit/LiveDisplaySnapshot.hpp"

namespace screenweaver {

/// How the virtual display manager and the self-test observe the live displays, and the two small
/// corrections the manager may make. Nothing here fails loudly: a problem of the platform gives an
/// empty list or false, and the caller decides what to report. Safe to call from any thread.
class LiveDisplayProbing {
public:
    virtual ~LiveDisplayProbing() = default;

    /// Every active display, in the order the window server lists them; empty on any failure.
    [[nodiscard]] virtual std::vector<LiveDisplaySnapshot> activeDisplays() = 0;

    /// Makes the display stop mirroring; true on success.
    virtual bool breakMirroring(std::uint32_t displayID) = 0;

    /// Switches the display to the first listed mode of exactly this pixel size; true on success.
    virtual bool selectMode(std::uint32_t displayID, std::int64_t pixelWidth, std::int64_t pixelHeight) = 0;

protected:
    LiveDisplayProbing() = default;
    LiveDisplayProbing(const LiveDisplayProbing&) = default;
    LiveDisplayProbing& operator=(const LiveDisplayProbing&) = default;
};

}  // namespace screenweaver
