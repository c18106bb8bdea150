#include "DisplayKit/X11/X11DisplayFacts.hpp"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <tuple>

#include "CoreTypes/Log.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"

namespace screenweaver::X11DisplayFacts {

namespace RandRScreen = platform::x11::RandRScreen;
using platform::x11::EDIDIdentity;
using platform::x11::VirtualMonitorName;
using platform::x11::X11Connection;

namespace {

// The connectors of panels built into a machine.
bool isInternalPanel(std::string_view connector) {
    return connector.starts_with("eDP") || connector.starts_with("LVDS") || connector.starts_with("DSI");
}

// Everything the snapshot and the references say of one monitor.
struct MonitorFacts {
    std::optional<VirtualMonitorName> ours;
    const RandRScreen::Output* output = nullptr;
    std::optional<EDIDIdentity> edid;

    [[nodiscard]] std::tuple<std::uint32_t, std::uint32_t, std::uint32_t> numbers() const {
        if (ours) {
            return {ours->vendorID, ours->productID, ours->serialNumber};
        }
        if (edid) {
            return {edid->manufacturerID, edid->productCode, edid->serialNumber};
        }
        return {0, 0, 0};
    }
};

MonitorFacts factsOf(const X11Connection& connection, const Screen& screen,
                     const RandRScreen::Monitor& monitor) {
    MonitorFacts facts{.ours = VirtualMonitorName::parse(monitor.nameText),
                       .output = screen.outputOf(monitor),
                       .edid = std::nullopt};
    if (!facts.ours && facts.output != nullptr) {
        if (const auto bytes = RandRScreen::edid(connection, facts.output->id)) {
            facts.edid = EDIDIdentity::parse(*bytes);
        }
    }
    return facts;
}

DisplayRef referenceOf(std::uint32_t displayID, const MonitorFacts& facts) {
    if (facts.ours) {
        return DisplayRef::virtualDisplay(facts.ours->specID);
    }
    if (facts.edid) {
        return DisplayRef::physical(physicalReference(*facts.edid, facts.output->name));
    }
    const auto [vendor, model, serial] = facts.numbers();
    std::string fallback = fmt::format("{}-{}-{}", vendor, model, serial);
    Log::display().error(fmt::format("No ColorSync UUID for display {}; using {}", displayID, fallback));
    return DisplayRef::physical(std::move(fallback));
}

std::optional<DisplayModeInfo> currentModeOf(const Screen& screen, const RandRScreen::Monitor& monitor) {
    if (monitor.outputs.empty()) {
        return ownSize(monitor);
    }
    const RandRScreen::Crtc* const crtc = screen.crtcOf(monitor);
    const RandRScreen::Mode* const mode = crtc != nullptr ? screen.resources.mode(crtc->mode) : nullptr;
    if (mode == nullptr) {
        return std::nullopt;
    }
    return DisplayModeInfo{mode->width, mode->height, crtc->width, crtc->height, mode->refreshRate()};
}

// Whether the server has powered its displays down through DPMS.
bool poweredDown(const X11Connection& connection, const platform::x11::XCBDPMSAPI* dpms) {
    if (dpms == nullptr) {
        return false;
    }
    const xcb_query_extension_reply_t* const extension =
        dpms->xcb_get_extension_data(connection.get(), dpms->xcb_dpms_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const auto info =
        connection.reply("DPMSInfo", dpms->xcb_dpms_info_reply, dpms->xcb_dpms_info(connection.get()));
    return info && (*info)->state != 0 && (*info)->power_level != XCB_DPMS_DPMS_MODE_ON;
}

}  // namespace

const RandRScreen::Output* Screen::outputOf(const RandRScreen::Monitor& monitor) const {
    return monitor.outputs.empty() ? nullptr : resources.output(monitor.outputs.front());
}

const RandRScreen::Crtc* Screen::crtcOf(const RandRScreen::Monitor& monitor) const {
    const RandRScreen::Output* const output = outputOf(monitor);
    return output != nullptr && output->crtc != 0 ? resources.crtc(output->crtc) : nullptr;
}

const RandRScreen::Monitor* Screen::monitor(std::uint32_t displayID) const {
    const auto found = std::ranges::find(monitors, displayID, &RandRScreen::Monitor::name);
    return found == monitors.end() ? nullptr : &*found;
}

std::expected<Screen, platform::x11::X11Error> readScreen(const X11Connection& connection) {
    auto monitors = RandRScreen::monitors(connection);
    if (!monitors) {
        return std::unexpected{std::move(monitors.error())};
    }
    auto resources = RandRScreen::resources(connection);
    if (!resources) {
        return std::unexpected{std::move(resources.error())};
    }
    return Screen{std::move(*monitors), std::move(*resources)};
}

double pointScale(const Screen& screen, const RandRScreen::Monitor& monitor) {
    const RandRScreen::Crtc* const crtc = screen.crtcOf(monitor);
    const RandRScreen::Mode* const mode = crtc != nullptr ? screen.resources.mode(crtc->mode) : nullptr;
    if (mode == nullptr || mode->width == 0) {
        return 1.0;
    }
    return static_cast<double>(crtc->width) / mode->width;
}

DisplayModeInfo modeInfo(const RandRScreen::Mode& mode, double scale) {
    return DisplayModeInfo{mode.width, mode.height, std::llround(mode.width * scale),
                           std::llround(mode.height * scale), mode.refreshRate()};
}

DisplayModeInfo ownSize(const RandRScreen::Monitor& monitor) {
    return DisplayModeInfo{monitor.width, monitor.height, monitor.width, monitor.height, 0.0};
}

std::string physicalReference(const EDIDIdentity& identity, std::string_view connector) {
    if (identity.serialNumber == 0) {
        return fmt::format("{}{:04X}-{}", identity.manufacturer(), identity.productCode, connector);
    }
    return fmt::format("{}{:04X}-{:08X}", identity.manufacturer(), identity.productCode,
                       identity.serialNumber);
}

std::expected<DisplayTopology, DisplayError> snapshot(const X11Connection& connection,
                                                      const platform::x11::XCBDPMSAPI* dpms) {
    const auto held = connection.exclusive();
    const auto screen = readScreen(connection);
    if (!screen) {
        return std::unexpected{DisplayError::enumerationFailed()};
    }
    const bool asleep = poweredDown(connection, dpms);
    DisplayTopology topology;
    topology.displays.reserve(screen->monitors.size());
    for (const RandRScreen::Monitor& monitor : screen->monitors) {
        const MonitorFacts facts = factsOf(connection, *screen, monitor);
        const auto [vendor, model, serial] = facts.numbers();
        topology.displays.push_back(LiveDisplay{
            .displayID = monitor.name,
            .ref = referenceOf(monitor.name, facts),
            .name = std::nullopt,
            .vendorNumber = vendor,
            .modelNumber = model,
            .serialNumber = serial,
            .isBuiltin = facts.output != nullptr && isInternalPanel(facts.output->name),
            .isMain = monitor.primary,
            .isAsleep = asleep && facts.output != nullptr,
            .bounds = Rect{{static_cast<double>(monitor.x), static_cast<double>(monitor.y)},
                           {static_cast<double>(monitor.width), static_cast<double>(monitor.height)}},
            .currentMode = currentModeOf(*screen, monitor),
        });
    }
    if (connection.broken()) {
        return std::unexpected{DisplayError::enumerationFailed()};
    }
    return topology;
}

DisplayRef ref(const X11Connection& connection, std::uint32_t displayID) {
    const auto held = connection.exclusive();
    const auto screen = readScreen(connection);
    const RandRScreen::Monitor* const monitor = screen ? screen->monitor(displayID) : nullptr;
    if (monitor == nullptr) {
        return referenceOf(displayID, MonitorFacts{});
    }
    return referenceOf(displayID, factsOf(connection, *screen, *monitor));
}

std::expected<std::vector<DisplayModeInfo>, DisplayError> modes(const X11Connection& connection,
                                                                std::uint32_t displayID) {
    const auto held = connection.exclusive();
    const auto screen = readScreen(connection);
    const RandRScreen::Monitor* const monitor = screen ? screen->monitor(displayID) : nullptr;
    if (monitor == nullptr) {
        return std::unexpected{DisplayError::modeListUnavailable(displayID)};
    }
    if (monitor->outputs.empty()) {
        return std::vector<DisplayModeInfo>{ownSize(*monitor)};
    }
    const RandRScreen::Output* const output = screen->outputOf(*monitor);
    const double scale = pointScale(*screen, *monitor);
    std::vector<DisplayModeInfo> listed;
    for (const xcb_randr_mode_t id : output != nullptr ? output->modes : std::vector<xcb_randr_mode_t>{}) {
        if (const RandRScreen::Mode* const mode = screen->resources.mode(id)) {
            listed.push_back(modeInfo(*mode, scale));
        }
    }
    if (listed.empty()) {
        return std::unexpected{DisplayError::modeListUnavailable(displayID)};
    }
    return listed;
}

}  // namespace screenweaver::X11DisplayFacts
