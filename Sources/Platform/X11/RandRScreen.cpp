#include "Platform/X11/RandRScreen.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace screenweaver::platform::x11::RandRScreen {
namespace {

// Monitors carry no outputs beyond this in a request of ours; the server caps them far lower.
constexpr std::size_t monitorInfoWords = sizeof(xcb_randr_monitor_info_t) / sizeof(std::uint32_t);
static_assert(sizeof(xcb_randr_monitor_info_t) % sizeof(std::uint32_t) == 0);

// An EDID's base block and its first extension, in 32-bit units.
constexpr std::uint32_t edidWords = 64;

// Where a server gives no screen size in millimetres, the X default of 96 dots per inch.
std::uint32_t millimetersAt96DPI(std::uint16_t pixels) {
    return static_cast<std::uint32_t>(std::lround(pixels * 25.4 / 96.0));
}

// Where the screen's size before the first growth is kept: on the root window, where every
// process that grows or shrinks the screen finds it. Width, height and the two millimetres.
constexpr std::string_view sizeBeforeGrowthProperty = "SCREENWEAVER_SCREEN_BEFORE";

template <class Value>
std::vector<Value> copied(const Value* values, int count) {
    return count > 0 ? std::vector<Value>(values, values + count) : std::vector<Value>{};
}

std::expected<std::optional<ScreenSize>, X11Error> sizeBeforeGrowth(const X11Connection& connection) {
    const auto property = connection.atom(sizeBeforeGrowthProperty);
    if (!property) {
        return std::unexpected{property.error()};
    }
    const XCBRandRAPI& api = connection.api();
    auto answer = connection.reply(
        "GetProperty", api.xcb_get_property_reply,
        api.xcb_get_property(connection.get(), 0, connection.root(), *property, XCB_ATOM_CARDINAL, 0, 4));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    if ((*answer)->format != 32 || api.xcb_get_property_value_length(answer->get()) != 4 * 4) {
        return std::nullopt;
    }
    const auto* const values = static_cast<const std::uint32_t*>(api.xcb_get_property_value(answer->get()));
    return ScreenSize{.width = static_cast<std::uint16_t>(values[0]),
                      .height = static_cast<std::uint16_t>(values[1]),
                      .widthInMillimeters = values[2],
                      .heightInMillimeters = values[3]};
}

std::expected<void, X11Error> keepSizeBeforeGrowth(const X11Connection& connection, const ScreenSize& size) {
    const auto property = connection.atom(sizeBeforeGrowthProperty);
    if (!property) {
        return std::unexpected{property.error()};
    }
    const std::array<std::uint32_t, 4> values{size.width, size.height, size.widthInMillimeters,
                                              size.heightInMillimeters};
    const XCBRandRAPI& api = connection.api();
    return connection.check(
        "ChangeProperty",
        api.xcb_change_property_checked(connection.get(), XCB_PROP_MODE_REPLACE, connection.root(), *property,
                                        XCB_ATOM_CARDINAL, 32, values.size(), values.data()));
}

std::expected<void, X11Error> forgetSizeBeforeGrowth(const X11Connection& connection) {
    const auto property = connection.atom(sizeBeforeGrowthProperty);
    if (!property) {
        return std::unexpected{property.error()};
    }
    const XCBRandRAPI& api = connection.api();
    return connection.check("DeleteProperty",
                            api.xcb_delete_property_checked(connection.get(), connection.root(), *property));
}

}  // namespace

double Mode::refreshRate() const {
    if (hTotal == 0 || vTotal == 0) {
        return 0.0;
    }
    double rate = static_cast<double>(dotClock) / (static_cast<double>(hTotal) * static_cast<double>(vTotal));
    if ((flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0) {
        rate *= 2.0;
    }
    if ((flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0) {
        rate /= 2.0;
    }
    return rate;
}

const Crtc* Resources::crtc(xcb_randr_crtc_t id) const {
    const auto found = std::ranges::find(crtcs, id, &Crtc::id);
    return found == crtcs.end() ? nullptr : &*found;
}

const Output* Resources::output(xcb_randr_output_t id) const {
    const auto found = std::ranges::find(outputs, id, &Output::id);
    return found == outputs.end() ? nullptr : &*found;
}

const Mode* Resources::mode(xcb_randr_mode_t id) const {
    const auto found = std::ranges::find(modes, id, &Mode::id);
    return found == modes.end() ? nullptr : &*found;
}

std::expected<std::vector<Monitor>, X11Error> monitors(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    auto answer = connection.reply("RRGetMonitors", api.xcb_randr_get_monitors_reply,
                                   api.xcb_randr_get_monitors(connection.get(), connection.root(), 1));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    std::vector<Monitor> found;
    for (xcb_randr_monitor_info_iterator_t each = api.xcb_randr_get_monitors_monitors_iterator(answer->get());
         each.rem > 0; api.xcb_randr_monitor_info_next(&each)) {
        const xcb_randr_monitor_info_t& info = *each.data;
        found.push_back(Monitor{
            .name = info.name,
            .nameText = {},
            .primary = info.primary != 0,
            .automatic = info.automatic != 0,
            .x = info.x,
            .y = info.y,
            .width = info.width,
            .height = info.height,
            .widthInMillimeters = info.width_in_millimeters,
            .heightInMillimeters = info.height_in_millimeters,
            .outputs = copied(api.xcb_randr_monitor_info_outputs(&info),
                              api.xcb_randr_monitor_info_outputs_length(&info)),
        });
    }
    for (Monitor& monitor : found) {
        auto name = connection.atomName(monitor.name);
        if (!name) {
            return std::unexpected{std::move(name.error())};
        }
        monitor.nameText = std::move(*name);
    }
    return found;
}

std::expected<Resources, X11Error> resources(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    xcb_connection_t* const c = connection.get();
    auto answer =
        connection.reply("RRGetScreenResourcesCurrent", api.xcb_randr_get_screen_resources_current_reply,
                         api.xcb_randr_get_screen_resources_current(c, connection.root()));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    const xcb_randr_get_screen_resources_current_reply_t* const screen = answer->get();
    Resources read;
    read.configTimestamp = screen->config_timestamp;
    const auto crtcIDs = copied(api.xcb_randr_get_screen_resources_current_crtcs(screen),
                                api.xcb_randr_get_screen_resources_current_crtcs_length(screen));
    const auto outputIDs = copied(api.xcb_randr_get_screen_resources_current_outputs(screen),
                                  api.xcb_randr_get_screen_resources_current_outputs_length(screen));
    for (const xcb_randr_mode_info_t& info :
         copied(api.xcb_randr_get_screen_resources_current_modes(screen),
                api.xcb_randr_get_screen_resources_current_modes_length(screen))) {
        read.modes.push_back(Mode{.id = info.id,
                                  .width = info.width,
                                  .height = info.height,
                                  .dotClock = info.dot_clock,
                                  .hTotal = info.htotal,
                                  .vTotal = info.vtotal,
                                  .flags = info.mode_flags});
    }

    // Every request first, then every answer: one round trip for all of them.
    std::vector<xcb_randr_get_crtc_info_cookie_t> crtcCookies;
    crtcCookies.reserve(crtcIDs.size());
    for (const xcb_randr_crtc_t crtc : crtcIDs) {
        crtcCookies.push_back(api.xcb_randr_get_crtc_info(c, crtc, read.configTimestamp));
    }
    std::vector<xcb_randr_get_output_info_cookie_t> outputCookies;
    outputCookies.reserve(outputIDs.size());
    for (const xcb_randr_output_t output : outputIDs) {
        outputCookies.push_back(api.xcb_randr_get_output_info(c, output, read.configTimestamp));
    }
    std::optional<X11Error> firstError;
    for (std::size_t index = 0; index < crtcIDs.size(); ++index) {
        auto info = connection.reply("RRGetCrtcInfo", api.xcb_randr_get_crtc_info_reply, crtcCookies[index]);
        if (!info) {
            firstError = firstError.value_or(std::move(info.error()));
            continue;
        }
        const xcb_randr_get_crtc_info_reply_t* const crtc = info->get();
        read.crtcs.push_back(Crtc{.id = crtcIDs[index],
                                  .x = crtc->x,
                                  .y = crtc->y,
                                  .width = crtc->width,
                                  .height = crtc->height,
                                  .mode = crtc->mode,
                                  .rotation = crtc->rotation,
                                  .outputs = copied(api.xcb_randr_get_crtc_info_outputs(crtc),
                                                    api.xcb_randr_get_crtc_info_outputs_length(crtc))});
    }
    for (std::size_t index = 0; index < outputIDs.size(); ++index) {
        auto info =
            connection.reply("RRGetOutputInfo", api.xcb_randr_get_output_info_reply, outputCookies[index]);
        if (!info) {
            firstError = firstError.value_or(std::move(info.error()));
            continue;
        }
        const xcb_randr_get_output_info_reply_t* const output = info->get();
        const auto name = copied(api.xcb_randr_get_output_info_name(output),
                                 api.xcb_randr_get_output_info_name_length(output));
        read.outputs.push_back(Output{.id = outputIDs[index],
                                      .name = std::string(name.begin(), name.end()),
                                      .connected = output->connection == XCB_RANDR_CONNECTION_CONNECTED,
                                      .crtc = output->crtc,
                                      .modes = copied(api.xcb_randr_get_output_info_modes(output),
                                                      api.xcb_randr_get_output_info_modes_length(output))});
    }
    if (firstError) {
        return std::unexpected{std::move(*firstError)};
    }
    return read;
}

std::expected<std::vector<std::uint8_t>, X11Error> edid(const X11Connection& connection,
                                                        xcb_randr_output_t output) {
    const XCBRandRAPI& api = connection.api();
    const auto property = connection.atom("EDID");
    if (!property) {
        return std::unexpected{property.error()};
    }
    auto answer = connection.reply("RRGetOutputProperty", api.xcb_randr_get_output_property_reply,
                                   api.xcb_randr_get_output_property(connection.get(), output, *property,
                                                                     XCB_ATOM_ANY, 0, edidWords, 0, 0));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    return copied(api.xcb_randr_get_output_property_data(answer->get()),
                  api.xcb_randr_get_output_property_data_length(answer->get()));
}

std::expected<std::optional<xcb_randr_output_t>, X11Error> primaryOutput(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    auto answer = connection.reply("RRGetOutputPrimary", api.xcb_randr_get_output_primary_reply,
                                   api.xcb_randr_get_output_primary(connection.get(), connection.root()));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    const xcb_randr_output_t primary = (*answer)->output;
    return primary == XCB_NONE ? std::nullopt : std::optional{primary};
}

std::expected<ScreenSize, X11Error> screenSize(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    xcb_connection_t* const c = connection.get();
    const xcb_get_geometry_cookie_t geometryCookie = api.xcb_get_geometry(c, connection.root());
    const xcb_randr_get_screen_info_cookie_t infoCookie = api.xcb_randr_get_screen_info(c, connection.root());
    auto geometry = connection.reply("GetGeometry", api.xcb_get_geometry_reply, geometryCookie);
    auto info = connection.reply("RRGetScreenInfo", api.xcb_randr_get_screen_info_reply, infoCookie);
    if (!geometry) {
        return std::unexpected{std::move(geometry.error())};
    }
    if (!info) {
        return std::unexpected{std::move(info.error())};
    }
    ScreenSize size{.width = (*geometry)->width,
                    .height = (*geometry)->height,
                    .widthInMillimeters = millimetersAt96DPI((*geometry)->width),
                    .heightInMillimeters = millimetersAt96DPI((*geometry)->height)};
    // Every size the screen information lists carries the screen's present millimetres.
    const int count = api.xcb_randr_get_screen_info_sizes_length(info->get());
    if (count > 0) {
        const xcb_randr_screen_size_t* const sizes = api.xcb_randr_get_screen_info_sizes(info->get());
        const xcb_randr_screen_size_t& current = sizes[(*info)->sizeID < count ? (*info)->sizeID : 0];
        size.widthInMillimeters = current.mwidth;
        size.heightInMillimeters = current.mheight;
    }
    return size;
}

std::expected<ScreenSizeRange, X11Error> screenSizeRange(const X11Connection& connection) {
    const XCBRandRAPI& api = connection.api();
    auto answer = connection.reply("RRGetScreenSizeRange", api.xcb_randr_get_screen_size_range_reply,
                                   api.xcb_randr_get_screen_size_range(connection.get(), connection.root()));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    return ScreenSizeRange{.minimumWidth = (*answer)->min_width,
                           .minimumHeight = (*answer)->min_height,
                           .maximumWidth = (*answer)->max_width,
                           .maximumHeight = (*answer)->max_height};
}

std::expected<void, X11Error> setScreenSize(const X11Connection& connection, const ScreenSize& size) {
    const XCBRandRAPI& api = connection.api();
    return connection.check(
        "RRSetScreenSize",
        api.xcb_randr_set_screen_size_checked(connection.get(), connection.root(), size.width, size.height,
                                              size.widthInMillimeters, size.heightInMillimeters));
}

std::expected<void, X11Error> setMonitor(const X11Connection& connection, const Monitor& monitor) {
    // The monitor's record, followed by its outputs.
    std::vector<std::uint32_t> words(monitorInfoWords + monitor.outputs.size(), 0);
    auto* const info = reinterpret_cast<xcb_randr_monitor_info_t*>(words.data());
    info->name = monitor.name;
    info->primary = monitor.primary ? 1 : 0;
    info->automatic = monitor.automatic ? 1 : 0;
    info->nOutput = static_cast<std::uint16_t>(monitor.outputs.size());
    info->x = monitor.x;
    info->y = monitor.y;
    info->width = monitor.width;
    info->height = monitor.height;
    info->width_in_millimeters = monitor.widthInMillimeters;
    info->height_in_millimeters = monitor.heightInMillimeters;
    std::ranges::copy(monitor.outputs, words.begin() + monitorInfoWords);

    // The request as the protocol lays it out: its header naming the root window, then the record.
    // Every part is a whole number of 32-bit units, so no padding follows.
    const XCBRandRAPI& api = connection.api();
    xcb_randr_set_monitor_request_t header{};
    header.window = connection.root();
    std::array<iovec, 4> parts{};
    parts[2] = iovec{&header, sizeof header};
    parts[3] = iovec{words.data(), words.size() * sizeof(std::uint32_t)};
    const xcb_protocol_request_t request{
        .count = 2, .ext = api.xcb_randr_id, .opcode = XCB_RANDR_SET_MONITOR, .isvoid = 1};
    const unsigned int sequence =
        api.xcb_send_request(connection.get(), XCB_REQUEST_CHECKED, &parts[2], &request);
    return connection.check("RRSetMonitor", xcb_void_cookie_t{sequence});
}

std::expected<void, X11Error> replaceMonitor(const X11Connection& connection, const Monitor& current,
                                             const Monitor& replacement) {
    if (auto deleted = deleteMonitor(connection, current.name); !deleted) {
        return deleted;
    }
    auto added = setMonitor(connection, replacement);
    if (!added) {
        (void)setMonitor(connection, current);
    }
    return added;
}

std::expected<void, MonitorFailure> rewriteMonitors(const X11Connection& connection,
                                                    const std::vector<Monitor>& current,
                                                    const std::vector<Monitor>& wanted) {
    const auto [left, right] = std::ranges::mismatch(current, wanted);
    for (auto monitor = left; monitor != current.end(); ++monitor) {
        if (auto deleted = deleteMonitor(connection, monitor->name); !deleted) {
            return std::unexpected{MonitorFailure{monitor->name, std::move(deleted.error())}};
        }
    }
    for (auto monitor = right; monitor != wanted.end(); ++monitor) {
        if (auto added = setMonitor(connection, *monitor); !added) {
            return std::unexpected{MonitorFailure{monitor->name, std::move(added.error())}};
        }
    }
    return {};
}

std::expected<void, X11Error> deleteMonitor(const X11Connection& connection, xcb_atom_t name) {
    const XCBRandRAPI& api = connection.api();
    return connection.check("RRDeleteMonitor",
                            api.xcb_randr_delete_monitor_checked(connection.get(), connection.root(), name));
}

std::expected<void, X11Error> setCrtc(const X11Connection& connection, xcb_timestamp_t configTimestamp,
                                      const Crtc& crtc) {
    const XCBRandRAPI& api = connection.api();
    auto answer = connection.reply(
        "RRSetCrtcConfig", api.xcb_randr_set_crtc_config_reply,
        api.xcb_randr_set_crtc_config(connection.get(), crtc.id, XCB_CURRENT_TIME, configTimestamp, crtc.x,
                                      crtc.y, crtc.mode, crtc.rotation,
                                      static_cast<std::uint32_t>(crtc.outputs.size()), crtc.outputs.data()));
    if (!answer) {
        return std::unexpected{std::move(answer.error())};
    }
    switch ((*answer)->status) {
        case XCB_RANDR_SET_CONFIG_SUCCESS:
            return {};
        case XCB_RANDR_SET_CONFIG_INVALID_CONFIG_TIME:
            return std::unexpected{X11Error::requestRefused("RRSetCrtcConfig", "invalid configuration time")};
        case XCB_RANDR_SET_CONFIG_INVALID_TIME:
            return std::unexpected{X11Error::requestRefused("RRSetCrtcConfig", "invalid time")};
        default:
            return std::unexpected{X11Error::requestRefused("RRSetCrtcConfig", "failed")};
    }
}

std::vector<std::optional<xcb_atom_t>> mirrorSources(const std::vector<Monitor>& monitors) {
    const auto sameRectangle = [](const Monitor& a, const Monitor& b) {
        return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
    };
    std::vector<std::optional<xcb_atom_t>> sources(monitors.size());
    for (std::size_t index = 0; index < monitors.size(); ++index) {
        std::size_t first = index;
        std::optional<std::size_t> primary;
        for (std::size_t other = 0; other < monitors.size(); ++other) {
            if (sameRectangle(monitors[other], monitors[index])) {
                first = std::min(first, other);
                if (monitors[other].primary && !primary) {
                    primary = other;
                }
            }
        }
        if (const std::size_t shown = primary.value_or(first); shown != index) {
            sources[index] = monitors[shown].name;
        }
    }
    return sources;
}

std::pair<std::uint32_t, std::uint32_t> extentOf(const std::vector<Monitor>& monitors) {
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    for (const Monitor& monitor : monitors) {
        right = std::max<std::int64_t>(right, std::int64_t{monitor.x} + monitor.width);
        bottom = std::max<std::int64_t>(bottom, std::int64_t{monitor.y} + monitor.height);
    }
    return {static_cast<std::uint32_t>(right), static_cast<std::uint32_t>(bottom)};
}

std::uint32_t scaledMillimeters(std::uint32_t millimeters, std::uint32_t pixels, std::uint32_t from) {
    return from == 0
               ? millimeters
               : static_cast<std::uint32_t>(std::lround(static_cast<double>(millimeters) * pixels / from));
}

ScreenSize resized(const ScreenSize& size, std::uint32_t width, std::uint32_t height) {
    return ScreenSize{
        .width = static_cast<std::uint16_t>(width),
        .height = static_cast<std::uint16_t>(height),
        .widthInMillimeters = scaledMillimeters(size.widthInMillimeters, width, size.width),
        .heightInMillimeters = scaledMillimeters(size.heightInMillimeters, height, size.height)};
}

std::expected<std::optional<ScreenSize>, X11Error> growToReach(const X11Connection& connection,
                                                               std::uint32_t right, std::uint32_t bottom) {
    auto current = screenSize(connection);
    if (!current) {
        return std::unexpected{std::move(current.error())};
    }
    if (right <= current->width && bottom <= current->height) {
        return std::nullopt;
    }
    // A screen's sides are 16-bit on the wire; anything wider is no screen the server could make.
    constexpr std::uint32_t largestSide = 0xFFFF;
    if (right > largestSide || bottom > largestSide) {
        return std::unexpected{X11Error::requestFailed("RRSetScreenSize", XCB_VALUE)};
    }
    auto before = sizeBeforeGrowth(connection);
    if (!before) {
        return std::unexpected{std::move(before.error())};
    }
    if (!*before) {
        if (auto kept = keepSizeBeforeGrowth(connection, *current); !kept) {
            return std::unexpected{std::move(kept.error())};
        }
    }
    const ScreenSize grown = resized(*current, std::max<std::uint32_t>(right, current->width),
                                     std::max<std::uint32_t>(bottom, current->height));
    if (auto set = setScreenSize(connection, grown); !set) {
        return std::unexpected{std::move(set.error())};
    }
    return *current;
}

std::expected<bool, X11Error> shrinkToHold(const X11Connection& connection,
                                           const std::vector<Monitor>& monitors) {
    auto current = screenSize(connection);
    if (!current) {
        return std::unexpected{std::move(current.error())};
    }
    auto range = screenSizeRange(connection);
    if (!range) {
        return std::unexpected{std::move(range.error())};
    }
    auto before = sizeBeforeGrowth(connection);
    if (!before) {
        return std::unexpected{std::move(before.error())};
    }
    const auto [right, bottom] = extentOf(monitors);
    const std::uint32_t width = std::clamp<std::uint32_t>(right, range->minimumWidth, current->width);
    const std::uint32_t height = std::clamp<std::uint32_t>(bottom, range->minimumHeight, current->height);
    const std::optional<ScreenSize>& sizeBefore = *before;
    const bool backToBefore =
        sizeBefore.has_value() && sizeBefore->width == width && sizeBefore->height == height;
    const bool shrinks = width != current->width || height != current->height;
    if (shrinks) {
        const ScreenSize target = backToBefore ? sizeBefore.value() : resized(*current, width, height);
        if (auto set = setScreenSize(connection, target); !set) {
            return std::unexpected{std::move(set.error())};
        }
    }
    if (backToBefore) {
        if (auto forgotten = forgetSizeBeforeGrowth(connection); !forgotten) {
            return std::unexpected{std::move(forgotten.error())};
        }
    }
    return shrinks;
}

std::expected<void, X11Error> announceChange(const X11Connection& connection) {
    auto current = screenSize(connection);
    if (!current) {
        return std::unexpected{std::move(current.error())};
    }
    return setScreenSize(connection, *current);
}

}  // namespace screenweaver::platform::x11::RandRScreen
