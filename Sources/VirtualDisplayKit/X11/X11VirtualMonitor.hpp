#pragma once

#include <memory>
#include <optional>

#include "Platform/X11/RandRScreen.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"
#include "VirtualDisplayKit/RetainedDisplay.hpp"

namespace screenweaver {

/// A virtual display on an X server: a RandR monitor without outputs, and the window that owns it.
/// Destroying it deletes the monitor and the window and shrinks the screen back to what the
/// remaining monitors need. Its display ID is the monitor's name atom.
class X11VirtualMonitor final : public RetainedDisplay {
public:
    /// Takes over a monitor just made on `connection` (which it shares with its maker).
    X11VirtualMonitor(std::shared_ptr<const platform::x11::X11Connection> connection, xcb_atom_t name,
                      platform::x11::VirtualMonitorName parts);
    ~X11VirtualMonitor() override;

    [[nodiscard]] std::uint32_t displayID() const override { return name_; }

private:
    std::shared_ptr<const platform::x11::X11Connection> connection_;
    xcb_atom_t name_;
    platform::x11::VirtualMonitorName parts_;
};

/// Removes one of this system's monitors, with its owner window when that is this process's
/// (`ownWindow`; an orphan's went with its process, and its number may be another client's now),
/// and shrinks the screen to what the other monitors need, under a grab of the server. The caller
/// holds the connection. Shared by a monitor's release and the sweep of orphans.
void removeVirtualMonitor(const platform::x11::X11Connection& connection, xcb_atom_t name,
                          std::optional<xcb_window_t> ownWindow);

}  // namespace screenweaver
