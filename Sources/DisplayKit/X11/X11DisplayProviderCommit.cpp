// Committing a validated plan on the X server: every change under one grab of the server, the
// configuration read first and put back when a step fails.
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <limits>
#include <unordered_map>

#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/PlanApplication.hpp"
#include "DisplayKit/X11/X11DisplayFacts.hpp"
#include "DisplayKit/X11/X11DisplayProvider.hpp"
#include "Platform/X11/ServerGrab.hpp"

namespace screenweaver {

namespace RandRScreen = platform::x11::RandRScreen;
using platform::x11::X11Connection;
using platform::x11::X11Error;

namespace {

// What went wrong, in the parentheses of a reason, like "(CGError 1001)" on a Mac.
std::string failedBecause(std::string_view what, const X11Error& error) {
    const std::string detail = std::visit(
        [&error](const auto& failure) -> std::string {
            using Failure = std::decay_t<decltype(failure)>;
            if constexpr (std::is_same_v<Failure, X11Error::RequestFailed>) {
                return fmt::format("X error {}", failure.errorCode);
            } else if constexpr (std::is_same_v<Failure, X11Error::RequestRefused>) {
                return failure.request + " answered " + failure.status;
            } else {
                return error.reason();
            }
        },
        error.value);
    return fmt::format("{} failed ({})", what, detail);
}

DisplayError configurationFailed(std::string reason) {
    return DisplayError::configurationFailed(std::move(reason));
}

// Where a display's frame lands on the X screen.
struct Placement {
    std::int16_t x = 0;
    std::int16_t y = 0;
};

// The changes one commit makes, and what they replaced, to put back on failure.
struct Changes {
    struct CrtcChange {
        std::uint32_t displayID = 0;
        bool modeChanged = false;
        RandRScreen::Crtc before;
        RandRScreen::Crtc after;
    };
    std::vector<CrtcChange> crtcs;
    // The monitors clients added, in the server's order, as they are and as they are to be.
    std::vector<RandRScreen::Monitor> addedBefore;
    std::vector<RandRScreen::Monitor> addedAfter;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

// The monitors clients added (not the server's own for its outputs), in the server's order.
std::vector<RandRScreen::Monitor> addedMonitors(const std::vector<RandRScreen::Monitor>& monitors) {
    std::vector<RandRScreen::Monitor> added;
    std::ranges::copy_if(monitors, std::back_inserter(added),
                         [](const RandRScreen::Monitor& monitor) { return !monitor.automatic; });
    return added;
}

class Commit {
public:
    Commit(const X11Connection& connection, const X11DisplayFacts::Screen& screen,
           RandRScreen::ScreenSize size)
        : connection_(connection), screen_(screen), before_(size) {}

    // Makes every change in order; on the first failure puts back what was changed and fails.
    std::expected<void, DisplayError> run(const Changes& changes) {
        const RandRScreen::ScreenSize target =
            RandRScreen::resized(before_, std::max(changes.width, std::uint32_t{before_.width}),
                                 std::max(changes.height, std::uint32_t{before_.height}));
        if (target.width != before_.width || target.height != before_.height) {
            if (auto grown = RandRScreen::setScreenSize(connection_, target); !grown) {
                return failed(failedBecause(fmt::format("screen size of {}x{}", target.width, target.height),
                                            grown.error()),
                              changes);
            }
            current_ = target;
        }
        for (const Changes::CrtcChange& change : changes.crtcs) {
            if (auto set = RandRScreen::setCrtc(connection_, screen_.resources.configTimestamp, change.after);
                !set) {
                const char* const what = change.modeChanged ? "mode change" : "origin change";
                return failed(
                    failedBecause(fmt::format("{} of display {}", what, change.displayID), set.error()),
                    changes);
            }
            crtcsChanged_.push_back(&change);
        }
        if (changes.addedAfter != changes.addedBefore) {
            monitorsChanged_ = true;
            if (auto moved =
                    RandRScreen::rewriteMonitors(connection_, changes.addedBefore, changes.addedAfter);
                !moved) {
                return failed(failedBecause(fmt::format("origin change of display {}", moved.error().monitor),
                                            moved.error().error),
                              changes);
            }
        }
        const RandRScreen::ScreenSize final = RandRScreen::resized(
            before_, std::max<std::uint32_t>(changes.width, 1), std::max<std::uint32_t>(changes.height, 1));
        const bool former = final.width == before_.width && final.height == before_.height;
        // Set even when it stays as it was: moved monitors alone send no event to other clients.
        if (final != current_ || monitorsChanged_) {
            if (auto set = RandRScreen::setScreenSize(connection_, former ? before_ : final); !set) {
                return failed(failedBecause(fmt::format("screen size of {}x{}", final.width, final.height),
                                            set.error()),
                              changes);
            }
        }
        return {};
    }

private:
    std::unexpected<DisplayError> failed(std::string reason, const Changes& changes) {
        restore(changes);
        return std::unexpected{configurationFailed(std::move(reason))};
    }

    // Puts back, in reverse order, everything changed so far, on a screen large enough for both the
    // old and the new configuration, then the screen's old size.
    void restore(const Changes& changes) {
        const RandRScreen::ScreenSize both = RandRScreen::resized(
            before_, std::max(before_.width, current_.width), std::max(before_.height, current_.height));
        if (both != current_) {
            (void)RandRScreen::setScreenSize(connection_, both);
        }
        if (monitorsChanged_) {
            // However far the rewrite got, the server's own list says what is there now.
            if (const auto now = RandRScreen::monitors(connection_)) {
                (void)RandRScreen::rewriteMonitors(connection_, addedMonitors(*now), changes.addedBefore);
            }
        }
        for (auto change = crtcsChanged_.rbegin(); change != crtcsChanged_.rend(); ++change) {
            (void)RandRScreen::setCrtc(connection_, screen_.resources.configTimestamp, (*change)->before);
        }
        (void)RandRScreen::setScreenSize(connection_, before_);
    }

    const X11Connection& connection_;
    const X11DisplayFacts::Screen& screen_;
    const RandRScreen::ScreenSize before_;
    RandRScreen::ScreenSize current_ = before_;
    std::vector<const Changes::CrtcChange*> crtcsChanged_;
    bool monitorsChanged_ = false;
};

// Each display's frame on the X screen, which has nothing left of or above its corner: the whole
// arrangement moves right and down until its leftmost and topmost edges are 0.
std::expected<std::unordered_map<std::uint32_t, Placement>, DisplayError> placementsOf(const FrameMap& frames,
                                                                                       Changes& changes) {
    double left = 0;
    double top = 0;
    for (const auto& [id, frame] : frames) {
        left = std::min(left, std::round(frame.origin.x));
        top = std::min(top, std::round(frame.origin.y));
    }
    std::unordered_map<std::uint32_t, Placement> placements;
    for (const auto& [id, frame] : frames) {
        const double x = std::round(frame.origin.x) - left;
        const double y = std::round(frame.origin.y) - top;
        const double right = x + std::abs(frame.size.width);
        const double bottom = y + std::abs(frame.size.height);
        if (!(right <= RandRScreen::farthestEdge && bottom <= RandRScreen::farthestEdge)) {
            return std::unexpected{configurationFailed(
                fmt::format("origin ({}, {}) of display {} is not expressible in display coordinates",
                            text::describe(frame.origin.x), text::describe(frame.origin.y), id))};
        }
        placements.emplace(id, Placement{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)});
        changes.width = std::max(changes.width, static_cast<std::uint32_t>(right));
        changes.height = std::max(changes.height, static_cast<std::uint32_t>(bottom));
    }
    return placements;
}

}  // namespace

std::expected<void, DisplayError> X11DisplayProvider::commit(const LayoutPlan& plan,
                                                             const FrameMap& frames) const {
    const X11Connection& connection = *connection_;
    const auto held = connection.exclusive();
    const auto grab = platform::x11::ServerGrab::grab(connection);
    if (!grab) {
        return std::unexpected{configurationFailed(failedBecause("GrabServer", grab.error()))};
    }
    const auto screen = X11DisplayFacts::readScreen(connection);
    if (!screen) {
        return std::unexpected{
            configurationFailed(failedBecause("reading the configuration", screen.error()))};
    }
    const auto size = RandRScreen::screenSize(connection);
    if (!size) {
        return std::unexpected{configurationFailed(failedBecause("reading the screen size", size.error()))};
    }

    for (const std::uint32_t id : plan.unmirror) {
        if (screen->monitor(id) == nullptr) {
            return std::unexpected{
                configurationFailed(fmt::format("un-mirror of display {} failed (no such display)", id))};
        }
    }
    // The first listed mode that matches, for each mode change; a later change of a display wins.
    std::unordered_map<std::uint32_t, xcb_randr_mode_t> modes;
    for (const ModeChange& change : plan.modeChanges) {
        const RandRScreen::Monitor* const monitor = screen->monitor(change.displayID);
        if (monitor == nullptr) {
            return std::unexpected{configurationFailed(
                fmt::format("mode change of display {} failed (no such display)", change.displayID))};
        }
        const RandRScreen::Output* const output = screen->outputOf(*monitor);
        if (output == nullptr) {
            if (X11DisplayFacts::ownSize(*monitor) != change.mode) {
                return std::unexpected{configurationFailed(PlanApplication::noModeMatching(change))};
            }
            continue;
        }
        const double scale = X11DisplayFacts::pointScale(*screen, *monitor);
        const auto match = std::ranges::find_if(output->modes, [&](xcb_randr_mode_t id) {
            const RandRScreen::Mode* const mode = screen->resources.mode(id);
            return mode != nullptr && X11DisplayFacts::modeInfo(*mode, scale) == change.mode;
        });
        if (match == output->modes.end()) {
            return std::unexpected{configurationFailed(PlanApplication::noModeMatching(change))};
        }
        modes.insert_or_assign(change.displayID, *match);
    }

    Changes changes;
    const auto placements = placementsOf(frames, changes);
    if (!placements) {
        return std::unexpected{placements.error()};
    }
    // Mode changes first, in the plan's order, then every other CRTC that moves, then the monitors
    // without outputs that move.
    std::vector<Changes::CrtcChange> otherCrtcs;
    changes.addedBefore = addedMonitors(screen->monitors);
    changes.addedAfter = changes.addedBefore;
    for (RandRScreen::Monitor& monitor : changes.addedAfter) {
        if (const auto placement = placements->find(monitor.name);
            placement != placements->end() && monitor.outputs.empty()) {
            monitor.x = placement->second.x;
            monitor.y = placement->second.y;
        }
    }
    for (const RandRScreen::Monitor& monitor : screen->monitors) {
        const auto placement = placements->find(monitor.name);
        if (placement == placements->end() || monitor.outputs.empty()) {
            continue;
        }
        const auto [x, y] = placement->second;
        const RandRScreen::Crtc* const crtc = screen->crtcOf(monitor);
        if (crtc == nullptr) {
            continue;
        }
        RandRScreen::Crtc after = *crtc;
        after.x = x;
        after.y = y;
        const auto mode = modes.find(monitor.name);
        if (mode != modes.end()) {
            after.mode = mode->second;
        }
        if (after.x == crtc->x && after.y == crtc->y && after.mode == crtc->mode) {
            continue;
        }
        (mode != modes.end() ? changes.crtcs : otherCrtcs)
            .push_back({monitor.name, after.mode != crtc->mode, *crtc, after});
    }
    std::ranges::stable_sort(changes.crtcs, [&plan](const auto& a, const auto& b) {
        const auto position = [&plan](std::uint32_t id) {
            return std::ranges::find(plan.modeChanges, id, &ModeChange::displayID) - plan.modeChanges.begin();
        };
        return position(a.displayID) < position(b.displayID);
    });
    changes.crtcs.insert(changes.crtcs.end(), otherCrtcs.begin(), otherCrtcs.end());
    return Commit{connection, *screen, *size}.run(changes);
}

}  // namespace screenweaver
