#include "VirtualDisplayKit/X11/X11VirtualDisplayMaker.hpp"

#include <cmath>
#include <fmt/format.h>

#include "Platform/X11/RandRScreen.hpp"
#include "Platform/X11/ServerGrab.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"
#include "VirtualDisplayKit/X11/X11VirtualMonitor.hpp"

namespace screenweaver {
namespace {

namespace RandRScreen = platform::x11::RandRScreen;
using platform::x11::X11Connection;
using platform::x11::X11Error;

VirtualDisplayError refusal(const VirtualDisplayRecipe& recipe, std::string_view why) {
    return VirtualDisplayError::creationFailed(fmt::format("the X server refused a display of {}x{}: {}",
                                                           recipe.maxPixelsWide, recipe.maxPixelsHigh, why));
}

// The owner window: an unmapped input-only window nobody sees, named after its monitor so that a
// window that merely took over the number of a dead owner is not mistaken for it.
std::expected<void, X11Error> makeOwnerWindow(const X11Connection& connection, xcb_window_t window,
                                              std::string_view name) {
    const platform::x11::XCBRandRAPI& api = connection.api();
    xcb_connection_t* const c = connection.get();
    if (auto made = connection.check(
            "CreateWindow",
            api.xcb_create_window_checked(c, XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1, 0,
                                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr));
        !made) {
        return std::unexpected{std::move(made.error())};
    }
    if (auto named = connection.check(
            "ChangeProperty", api.xcb_change_property_checked(
                                  c, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                  static_cast<std::uint32_t>(name.size()), name.data()));
        !named) {
        (void)connection.check("DestroyWindow", api.xcb_destroy_window_checked(c, window));
        return std::unexpected{std::move(named.error())};
    }
    return {};
}

}  // namespace

X11VirtualDisplayMaker::X11VirtualDisplayMaker(std::shared_ptr<const X11Connection> connection)
    : connection_(std::move(connection)) {}

std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> X11VirtualDisplayMaker::makeDisplay(
    const VirtualDisplayRecipe& recipe) const {
    return std::unexpected{refusal(recipe, "a monitor needs the identity of its VirtualDisplaySpec")};
}

std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError>
X11VirtualDisplayMaker::makeIdentifiedDisplay(const VirtualDisplayRecipe& recipe, const UUID& specID) const {
    if (recipe.maxPixelsWide > RandRScreen::farthestEdge ||
        recipe.maxPixelsHigh > RandRScreen::farthestEdge) {
        return std::unexpected{
            refusal(recipe, fmt::format("no monitor is larger than {0}x{0}", RandRScreen::farthestEdge))};
    }
    const X11Connection& connection = *connection_;
    const auto held = connection.exclusive();
    platform::x11::VirtualMonitorName parts{.vendorID = recipe.vendorID,
                                            .productID = recipe.productID,
                                            .serialNumber = recipe.serialNumber,
                                            .specID = specID,
                                            .owner = 0};
    // The owner's number is part of the name, and the name is the owner's: the number comes first.
    const platform::x11::XCBRandRAPI& api = connection.api();
    const xcb_window_t owner = api.xcb_generate_id(connection.get());
    parts.owner = owner;
    const std::string name = parts.text();
    const auto failed = [&](const X11Error& error) {
        return std::unexpected{refusal(recipe, error.reason())};
    };

    auto atom = connection.atom(name);
    if (!atom) {
        return failed(atom.error());
    }
    if (auto window = makeOwnerWindow(connection, owner, name); !window) {
        return failed(window.error());
    }
    std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> made =
        [&]() -> std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> {
        // Read, add and grow under one grab, so no other client moves the screen in between.
        auto grab = platform::x11::ServerGrab::grab(connection);
        if (!grab) {
            return failed(grab.error());
        }
        auto monitors = RandRScreen::monitors(connection);
        if (!monitors) {
            return failed(monitors.error());
        }
        const std::uint32_t x = RandRScreen::extentOf(*monitors).first;
        if (x + recipe.maxPixelsWide > RandRScreen::farthestEdge) {
            return std::unexpected{refusal(
                recipe, fmt::format("there is no room right of the monitors, which reach {} pixels", x))};
        }
        const RandRScreen::Monitor monitor{
            .name = *atom,
            .nameText = name,
            .primary = false,
            .automatic = false,
            .x = static_cast<std::int16_t>(x),
            .y = 0,
            .width = static_cast<std::uint16_t>(recipe.maxPixelsWide),
            .height = static_cast<std::uint16_t>(recipe.maxPixelsHigh),
            .widthInMillimeters = static_cast<std::uint32_t>(std::lround(recipe.sizeInMillimeters.width)),
            .heightInMillimeters = static_cast<std::uint32_t>(std::lround(recipe.sizeInMillimeters.height)),
            .outputs = {},
        };
        // The monitor first, then the screen grown under it: should the connection break in
        // between, what is left is a monitor without an owner, which goes as an orphan, never a
        // grown screen that nobody would shrink.
        if (auto added = RandRScreen::setMonitor(connection, monitor); !added) {
            return failed(added.error());
        }
        const auto grown =
            RandRScreen::growToReach(connection, x + recipe.maxPixelsWide, recipe.maxPixelsHigh);
        if (!grown) {
            (void)RandRScreen::deleteMonitor(connection, *atom);
            return failed(grown.error());
        }
        if (!*grown) {
            // The screen held it already: nothing told the other clients of the new monitor yet.
            (void)RandRScreen::announceChange(connection);
        }
        return std::make_unique<X11VirtualMonitor>(connection_, *atom, parts);
    }();
    if (!made) {
        (void)connection.check("DestroyWindow", api.xcb_destroy_window_checked(connection.get(), owner));
    }
    return made;
}

}  // namespace screenweaver
