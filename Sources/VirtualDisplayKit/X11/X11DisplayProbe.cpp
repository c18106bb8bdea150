#include "VirtualDisplayKit/X11/X11DisplayProbe.hpp"

#include <algorithm>
#include <iterator>

#include "Platform/X11/EDIDIdentity.hpp"
#include "Platform/X11/RandRScreen.hpp"
#include "Platform/X11/ServerGrab.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"
#include "VirtualDisplayKit/X11/X11VirtualMonitor.hpp"

namespace screenweaver {
namespace {

namespace RandRScreen = platform::x11::RandRScreen;
using platform::x11::VirtualMonitorName;
using platform::x11::X11Connection;

// The longest name an owner window of ours carries, in 32-bit units.
constexpr std::uint32_t ownerNameWords = 64;

// Whether the window a monitor of ours names as its owner is still there and still its owner: a
// window of a live connection named after the monitor.
bool ownerIsAlive(const X11Connection& connection, const VirtualMonitorName& parts) {
    const platform::x11::XCBRandRAPI& api = connection.api();
    auto property = connection.reply("GetProperty", api.xcb_get_property_reply,
                                     api.xcb_get_property(connection.get(), 0, parts.owner, XCB_ATOM_WM_NAME,
                                                          XCB_ATOM_STRING, 0, ownerNameWords));
    if (!property) {
        // No such window (its connection closed), or we cannot tell: only the first is an orphan.
        return !std::holds_alternative<platform::x11::X11Error::RequestFailed>(property.error().value);
    }
    const auto* const value = static_cast<const char*>(api.xcb_get_property_value(property->get()));
    const auto length = static_cast<std::size_t>(api.xcb_get_property_value_length(property->get()));
    return std::string_view{value, length} == parts.text();
}

// Removes the monitors of ours whose owner is gone, the way the window server on a Mac removes a
// dead process's displays.
void removeOrphans(const X11Connection& connection, const std::vector<RandRScreen::Monitor>& monitors) {
    for (const RandRScreen::Monitor& monitor : monitors) {
        const auto parts = VirtualMonitorName::parse(monitor.nameText);
        if (parts && !ownerIsAlive(connection, *parts)) {
            removeVirtualMonitor(connection, monitor.name, std::nullopt);
        }
    }
}

std::pair<std::uint32_t, std::uint32_t> identityOf(const X11Connection& connection,
                                                   const RandRScreen::Monitor& monitor) {
    if (const auto parts = VirtualMonitorName::parse(monitor.nameText)) {
        return {parts->vendorID, parts->serialNumber};
    }
    if (!monitor.outputs.empty()) {
        if (const auto edid = RandRScreen::edid(connection, monitor.outputs.front())) {
            if (const auto identity = platform::x11::EDIDIdentity::parse(*edid)) {
                return {identity->manufacturerID, identity->serialNumber};
            }
        }
    }
    return {0, 0};
}

// Holds the connection and the server while `correction` changes the monitor `displayID`, given the
// monitors as they are; false when the monitor is not there or the server cannot be read.
template <class Correction>
bool correctMonitor(const X11Connection& connection, std::uint32_t displayID, const Correction& correction) {
    const auto held = connection.exclusive();
    const auto grab = platform::x11::ServerGrab::grab(connection);
    if (!grab) {
        return false;
    }
    const auto monitors = RandRScreen::monitors(connection);
    if (!monitors) {
        return false;
    }
    const auto found = std::ranges::find(*monitors, displayID, &RandRScreen::Monitor::name);
    return found != monitors->end() && correction(*monitors, *found);
}

// Puts the screen back to the size it had before it grew, if it grew.
void undoGrowth(const X11Connection& connection, const std::optional<RandRScreen::ScreenSize>& formerSize) {
    if (formerSize.has_value()) {
        (void)RandRScreen::setScreenSize(connection, formerSize.value());
    }
}

// Moves or resizes a monitor without outputs and grows the screen to hold it.
bool placeMonitor(const X11Connection& connection, const RandRScreen::Monitor& current,
                  const RandRScreen::Monitor& placed) {
    const auto right = static_cast<std::uint32_t>(std::max(0, int{placed.x})) + placed.width;
    const auto bottom = static_cast<std::uint32_t>(std::max(0, int{placed.y})) + placed.height;
    const auto formerSize = RandRScreen::growToReach(connection, right, bottom);
    if (!formerSize) {
        return false;
    }
    if (!RandRScreen::replaceMonitor(connection, current, placed)) {
        undoGrowth(connection, *formerSize);
        return false;
    }
    if (!*formerSize) {
        (void)RandRScreen::announceChange(connection);
    }
    return true;
}

// Moves or switches the CRTC showing a monitor's output and grows the screen to hold it.
bool placeOutput(const X11Connection& connection, const RandRScreen::Monitor& monitor, std::int16_t x,
                 std::int16_t y, std::optional<std::pair<std::uint16_t, std::uint16_t>> size) {
    const auto resources = RandRScreen::resources(connection);
    if (!resources) {
        return false;
    }
    const RandRScreen::Output* const output = resources->output(monitor.outputs.front());
    const RandRScreen::Crtc* const shown = output != nullptr ? resources->crtc(output->crtc) : nullptr;
    if (shown == nullptr) {
        return false;
    }
    RandRScreen::Crtc crtc = *shown;
    crtc.x = x;
    crtc.y = y;
    std::uint32_t width = crtc.width;
    std::uint32_t height = crtc.height;
    if (size) {
        const auto mode = std::ranges::find_if(output->modes, [&](xcb_randr_mode_t id) {
            const RandRScreen::Mode* const candidate = resources->mode(id);
            return candidate != nullptr && candidate->width == size->first &&
                   candidate->height == size->second;
        });
        if (mode == output->modes.end()) {
            return false;
        }
        crtc.mode = *mode;
        width = size->first;
        height = size->second;
    }
    const auto formerSize =
        RandRScreen::growToReach(connection, static_cast<std::uint32_t>(std::max(0, int{x})) + width,
                                 static_cast<std::uint32_t>(std::max(0, int{y})) + height);
    if (!formerSize) {
        return false;
    }
    if (!RandRScreen::setCrtc(connection, resources->configTimestamp, crtc)) {
        undoGrowth(connection, *formerSize);
        return false;
    }
    return true;
}

}  // namespace

X11DisplayProbe::X11DisplayProbe(std::shared_ptr<const X11Connection> connection)
    : connection_(std::move(connection)) {}

std::vector<LiveDisplaySnapshot> X11DisplayProbe::activeDisplays() {
    const X11Connection& connection = *connection_;
    const auto held = connection.exclusive();
    const auto monitors = RandRScreen::monitors(connection);
    if (!monitors) {
        return {};
    }
    const auto sources = RandRScreen::mirrorSources(*monitors);
    std::vector<LiveDisplaySnapshot> snapshots;
    snapshots.reserve(monitors->size());
    for (std::size_t index = 0; index < monitors->size(); ++index) {
        const RandRScreen::Monitor& monitor = (*monitors)[index];
        const auto [vendor, serial] = identityOf(connection, monitor);
        snapshots.push_back({.displayID = monitor.name,
                             .vendorNumber = vendor,
                             .serialNumber = serial,
                             .mirrorSource = sources[index],
                             .pixelWidth = monitor.width,
                             .pixelHeight = monitor.height});
    }
    removeOrphans(connection, *monitors);
    if (connection.broken()) {
        return {};
    }
    return snapshots;
}

bool X11DisplayProbe::breakMirroring(std::uint32_t displayID) {
    return correctMonitor(
        *connection_, displayID,
        [&](const std::vector<RandRScreen::Monitor>& monitors, const RandRScreen::Monitor& monitor) {
            const auto sources = RandRScreen::mirrorSources(monitors);
            if (!sources[static_cast<std::size_t>(&monitor - monitors.data())]) {
                return true;
            }
            std::vector<RandRScreen::Monitor> others;
            std::ranges::copy_if(monitors, std::back_inserter(others),
                                 [&](const RandRScreen::Monitor& other) { return other.name != displayID; });
            const std::uint32_t right = RandRScreen::extentOf(others).first;
            if (right + monitor.width > RandRScreen::farthestEdge) {
                return false;
            }
            const auto x = static_cast<std::int16_t>(right);
            if (!monitor.outputs.empty()) {
                return placeOutput(*connection_, monitor, x, 0, std::nullopt);
            }
            RandRScreen::Monitor moved = monitor;
            moved.x = x;
            moved.y = 0;
            return placeMonitor(*connection_, monitor, moved);
        });
}

bool X11DisplayProbe::selectMode(std::uint32_t displayID, std::int64_t pixelWidth, std::int64_t pixelHeight) {
    if (pixelWidth <= 0 || pixelHeight <= 0 || pixelWidth > RandRScreen::farthestEdge ||
        pixelHeight > RandRScreen::farthestEdge) {
        return false;
    }
    const auto width = static_cast<std::uint16_t>(pixelWidth);
    const auto height = static_cast<std::uint16_t>(pixelHeight);
    return correctMonitor(
        *connection_, displayID,
        [&](const std::vector<RandRScreen::Monitor>&, const RandRScreen::Monitor& monitor) {
            if (!monitor.outputs.empty()) {
                return placeOutput(*connection_, monitor, monitor.x, monitor.y, std::pair{width, height});
            }
            RandRScreen::Monitor resized = monitor;
            resized.widthInMillimeters =
                RandRScreen::scaledMillimeters(monitor.widthInMillimeters, width, monitor.width);
            resized.heightInMillimeters =
                RandRScreen::scaledMillimeters(monitor.heightInMillimeters, height, monitor.height);
            resized.width = width;
            resized.height = height;
            return placeMonitor(*connection_, monitor, resized);
        });
}

}  // namespace screenweaver
