#include "VirtualDisplayKit/X11/X11VirtualMonitor.hpp"

#include <algorithm>
#include <fmt/format.h>

#include "CoreTypes/Log.hpp"
#include "Platform/X11/ServerGrab.hpp"

namespace screenweaver {

namespace RandRScreen = platform::x11::RandRScreen;

X11VirtualMonitor::X11VirtualMonitor(std::shared_ptr<const platform::x11::X11Connection> connection,
                                     xcb_atom_t name, platform::x11::VirtualMonitorName parts)
    : connection_(std::move(connection)), name_(name), parts_(parts) {}

X11VirtualMonitor::~X11VirtualMonitor() {
    const auto held = connection_->exclusive();
    removeVirtualMonitor(*connection_, name_, parts_.owner);
}

void removeVirtualMonitor(const platform::x11::X11Connection& connection, xcb_atom_t name,
                          std::optional<xcb_window_t> ownWindow) {
    // Each step goes on whatever the one before it answered: what can be taken away is.
    const auto grab = platform::x11::ServerGrab::grab(connection);
    std::vector<platform::x11::X11Error> problems;
    if (auto deleted = RandRScreen::deleteMonitor(connection, name); !deleted) {
        problems.push_back(std::move(deleted.error()));
    }
    if (ownWindow) {
        const platform::x11::XCBRandRAPI& api = connection.api();
        if (auto destroyed = connection.check("DestroyWindow",
                                              api.xcb_destroy_window_checked(connection.get(), *ownWindow));
            !destroyed) {
            problems.push_back(std::move(destroyed.error()));
        }
    }
    if (auto remaining = RandRScreen::monitors(connection); remaining) {
        auto shrunk = RandRScreen::shrinkToHold(connection, *remaining);
        if (!shrunk) {
            problems.push_back(std::move(shrunk.error()));
        } else if (!*shrunk) {
            if (auto announced = RandRScreen::announceChange(connection); !announced) {
                problems.push_back(std::move(announced.error()));
            }
        }
    } else {
        problems.push_back(std::move(remaining.error()));
    }
    for (const platform::x11::X11Error& problem : problems) {
        Log::virtualDisplay().error(
            fmt::format("removing the monitor of virtual display {}: {}", name, problem.reason()));
    }
}

}  // namespace screenweaver
