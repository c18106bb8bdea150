#include "DisplayKit/X11/X11DisplayProvider.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <sys/eventfd.h>
#include <system_error>

#include "CoreTypes/Log.hpp"
#include "DisplayKit/ModeList.hpp"
#include "DisplayKit/PlanApplication.hpp"
#include "DisplayKit/X11/X11DisplayFacts.hpp"
#include "Platform/X11/RandRScreen.hpp"

namespace screenweaver {

namespace RandRScreen = platform::x11::RandRScreen;
using platform::x11::X11Connection;
using platform::x11::X11Error;

namespace {

constexpr std::uint16_t randrEvents = XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                      XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE;

}  // namespace

std::expected<std::unique_ptr<X11DisplayProvider>, X11Error> X11DisplayProvider::open(
    Clock::Duration changeDebounceInterval, Clock::Duration settleTimeout,
    const platform::x11::XCBRandRAPI& x11, const platform::x11::XCBDPMSAPI* dpms, const Clock& clock) {
    auto connection = X11Connection::open(x11);
    if (!connection) {
        return std::unexpected{std::move(connection.error())};
    }
    auto events = X11Connection::open(x11);
    if (!events) {
        return std::unexpected{std::move(events.error())};
    }
    const int wakeUp = ::eventfd(0, EFD_CLOEXEC);
    if (wakeUp < 0) {
        return std::unexpected{
            X11Error::connectionFailed("the event thread's wake-up descriptor could not be made: " +
                                       std::generic_category().message(errno))};
    }
    if (auto selected = (*events)->check(
            "RRSelectInput",
            x11.xcb_randr_select_input_checked((*events)->get(), (*events)->root(), randrEvents));
        !selected) {
        ::close(wakeUp);
        return std::unexpected{std::move(selected.error())};
    }
    return std::unique_ptr<X11DisplayProvider>{
        new X11DisplayProvider{std::move(*connection), std::move(*events), wakeUp, dpms,
                               changeDebounceInterval, settleTimeout, clock}};
}

X11DisplayProvider::X11DisplayProvider(std::shared_ptr<const X11Connection> connection,
                                       std::unique_ptr<const X11Connection> events, int wakeUp,
                                       const platform::x11::XCBDPMSAPI* dpms,
                                       Clock::Duration changeDebounceInterval, Clock::Duration settleTimeout,
                                       const Clock& clock)
    : connection_(std::move(connection)),
      events_(std::move(events)),
      dpms_(dpms),
      clock_(clock),
      // The snapshot source holds the connection, never the provider.
      debouncer_(
          changeDebounceInterval,
          [connection = connection_, dpms]() -> std::optional<DisplayTopology> {
              auto topology = X11DisplayFacts::snapshot(*connection, dpms);
              return topology ? std::optional{std::move(*topology)} : std::nullopt;
          },
          clock),
      settleTimeout_(settleTimeout),
      wakeUp_(wakeUp),
      eventThread_([this] { readEvents(); }) {}

X11DisplayProvider::~X11DisplayProvider() {
    {
        const std::scoped_lock lock{eventsMutex_};
        stopping_ = true;
    }
    const std::uint64_t one = 1;
    (void)::write(wakeUp_, &one, sizeof one);
    eventThread_.join();
    ::close(wakeUp_);
}

std::expected<DisplayTopology, DisplayError> X11DisplayProvider::snapshot() const {
    return X11DisplayFacts::snapshot(*connection_, dpms_);
}

AsyncStream<DisplayTopology> X11DisplayProvider::changes() const {
    return debouncer_.broadcaster().stream();
}

std::expected<std::vector<DisplayModeInfo>, DisplayError> X11DisplayProvider::availableModes(
    std::uint32_t displayID) const {
    auto modes = X11DisplayFacts::modes(*connection_, displayID);
    if (!modes) {
        return modes;
    }
    return ModeList::normalized(*modes);
}

DisplayRef X11DisplayProvider::ref(std::uint32_t displayID) const {
    return X11DisplayFacts::ref(*connection_, displayID);
}

std::expected<void, DisplayError> X11DisplayProvider::apply(const LayoutPlan& plan, const StopToken& stop) {
    const auto topology = PlanApplication::settledTopology(
        plan, debouncer_, settleTimeout_, clock_, [this] { return snapshot(); }, stop);
    if (!topology) {
        return std::unexpected{topology.error()};
    }
    const auto frames = PlanApplication::validatedFrames(
        plan, *topology, [this](std::uint32_t displayID) { return ref(displayID); });
    if (!frames) {
        return std::unexpected{frames.error()};
    }
    if (auto committed = commit(plan, *frames); !committed) {
        return committed;
    }
    PlanApplication::logCommitted(plan);
    return {};
}

void X11DisplayProvider::readEvents() {
    const platform::x11::XCBRandRAPI& api = events_->api();
    xcb_connection_t* const c = events_->get();
    const std::uint8_t screenChange = events_->randrFirstEvent() + XCB_RANDR_SCREEN_CHANGE_NOTIFY;
    const std::uint8_t notify = events_->randrFirstEvent() + XCB_RANDR_NOTIFY;
    const auto readQueued = [&] {
        while (const platform::x11::XCBPointer<xcb_generic_event_t> event{api.xcb_poll_for_event(c)}) {
            const std::uint8_t type = event->response_type & 0x7F;
            if (type == screenChange || type == notify) {
                debouncer_.signal();
            }
        }
    };
    for (;;) {
        readQueued();
        std::array<pollfd, 2> ready{pollfd{api.xcb_get_file_descriptor(c), POLLIN, 0},
                                    pollfd{wakeUp_, POLLIN, 0}};
        if (events_->broken()) {
            // Nothing more will come; wait only to be stopped.
            ready[0].fd = -1;
        }
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            continue;
        }
        if ((ready[1].revents & POLLIN) == 0) {
            continue;
        }
        std::uint64_t count = 0;
        (void)::read(wakeUp_, &count, sizeof count);
        std::unique_lock lock{eventsMutex_};
        if (stopping_) {
            return;
        }
        const std::uint64_t asked = synchronizationsAsked_;
        lock.unlock();
        if (asked != synchronizationsDone_) {
            // Every event the server sent before this round trip's reply arrives before it.
            (void)events_->reply("GetInputFocus", api.xcb_get_input_focus_reply, api.xcb_get_input_focus(c));
            readQueued();
            lock.lock();
            synchronizationsDone_ = asked;
            synchronized_.notify_all();
        }
    }
}

void X11DisplayProvider::synchronizeEvents() {
    std::unique_lock lock{eventsMutex_};
    const std::uint64_t ticket = ++synchronizationsAsked_;
    const std::uint64_t one = 1;
    (void)::write(wakeUp_, &one, sizeof one);
    synchronized_.wait(lock, [&] { return synchronizationsDone_ >= ticket; });
}

}  // namespace screenweaver
