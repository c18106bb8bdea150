#pragma once

#include <memory>

#include "Platform/X11/X11Connection.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"

namespace screenweaver {

/// The live display probe on an X server's RandR 1.5 monitors: the rectangles a desktop places
/// windows on, one per active output plus the monitors without outputs that this system makes.
///
/// A monitor's display ID is its name's atom: 32 bits, never 0, the same for as long as the
/// monitor lives, and no two monitors share a name. Its pixel size is the monitor's. A monitor
/// mirrors another when both cover exactly the same rectangle of the screen: of such a group, the
/// primary monitor (else the first listed) is the one shown and every other one mirrors it. Vendor
/// and serial numbers come from the EDID of a monitor's first output, and from the name of a
/// monitor this system made (see `VirtualMonitorName`); a monitor with neither reports 0 for both.
///
/// Orphans go as they do on a Mac, where the window server removes a dead process's displays: a
/// listing still shows a monitor of ours whose owner window is gone, then removes it, so the next
/// listing no longer does.
///
/// Every failure, a lost connection included, gives an empty list or false.
class X11DisplayProbe final : public LiveDisplayProbing {
public:
    /// Shares the connection with the maker and the displays made.
    explicit X11DisplayProbe(std::shared_ptr<const platform::x11::X11Connection> connection);

    [[nodiscard]] std::vector<LiveDisplaySnapshot> activeDisplays() override;

    /// Moves a mirroring monitor right of all the others, growing the screen to hold it; true for a
    /// monitor that mirrors nothing, which is left where it is.
    bool breakMirroring(std::uint32_t displayID) override;

    /// Resizes a monitor without outputs to exactly that pixel size (its millimetres scaled alike);
    /// switches a monitor with an output to the output's first mode of exactly that size.
    bool selectMode(std::uint32_t displayID, std::int64_t pixelWidth, std::int64_t pixelHeight) override;

private:
    std::shared_ptr<const platform::x11::X11Connection> connection_;
};

}  // namespace screenweaver
