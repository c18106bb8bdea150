// The display provider on a real X server (Xorg with the dummy driver): snapshots, modes, plans
// applied all or nothing, and change notification from other clients.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <future>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>
#include <xcb/randr.h>

#include "CoreTypes/CapturingLogSink.hpp"
#include "CoreTypes/Model/VirtualDisplaySerial.hpp"
#include "DisplayKit/DisplaySettleWaiter.hpp"
#include "DisplayKit/ModeList.hpp"
#include "DisplayKit/X11/X11DisplayProvider.hpp"
#include "HeadlessXServer/HeadlessXServerEnvironment.hpp"
#include "HeadlessXServer/XServerState.hpp"
#include "Platform/X11/RandRScreen.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {

struct X11DisplayProviderTestApi {
    static void synchronizeEvents(X11DisplayProvider& provider) { provider.synchronizeEvents(); }
    static bool burstInFlight(const X11DisplayProvider& provider) {
        return provider.debouncer_.burstInFlight();
    }
    static std::size_t subscriberCount(const X11DisplayProvider& provider) {
        return provider.debouncer_.broadcaster().subscriberCountForTesting();
    }
};

namespace {

using namespace std::chrono_literals;
using platform::x11::XCBRandRAPI;
namespace RandRScreen = platform::x11::RandRScreen;

constexpr Clock::Duration debounceInterval = 500ms;
constexpr Clock::Duration settleTimeout = 3s;

VirtualDisplaySpec spec(std::int64_t width, std::int64_t height) {
    return VirtualDisplaySpec{.id = UUID::random(),
                              .name = "Arranged",
                              .catalogEntryID = std::nullopt,
                              .pixelWidth = width,
                              .pixelHeight = height,
                              .refreshRate = 60.0,
                              .hiDPI = false,
                              .rotation = 0,
                              .dynamicRange = DynamicRange::standard,
                              .targetPPIOverride = std::nullopt};
}

// Changes made by another client, on a connection of the test's own.
class OtherClient {
public:
    OtherClient() : connection_(*platform::x11::X11Connection::open(platform::x11::systemXCBRandR())) {}

    void addMonitor(const std::string& name, std::int16_t x, std::uint16_t width, std::uint16_t height) {
        const auto held = connection_->exclusive();
        const RandRScreen::Monitor monitor{.name = *connection_->atom(name),
                                           .nameText = name,
                                           .primary = false,
                                           .automatic = false,
                                           .x = x,
                                           .y = 0,
                                           .width = width,
                                           .height = height,
                                           .widthInMillimeters = 300,
                                           .heightInMillimeters = 200,
                                           .outputs = {}};
        ASSERT_TRUE(RandRScreen::setMonitor(*connection_, monitor));
    }

    void deleteMonitor(const std::string& name) {
        const auto held = connection_->exclusive();
        ASSERT_TRUE(RandRScreen::deleteMonitor(*connection_, *connection_->atom(name)));
    }

    void setScreenSize(const RandRScreen::ScreenSize& size) {
        const auto held = connection_->exclusive();
        ASSERT_TRUE(RandRScreen::setScreenSize(*connection_, size));
    }

    /// The monitors changed without the screen: the server tells nobody until this.
    void announce() {
        const auto held = connection_->exclusive();
        ASSERT_TRUE(RandRScreen::announceChange(*connection_));
    }

    [[nodiscard]] std::uint32_t atom(const std::string& name) {
        const auto held = connection_->exclusive();
        return *connection_->atom(name);
    }

private:
    std::unique_ptr<platform::x11::X11Connection> connection_;
};

class X11Arrangement : public ::testing::Test {
protected:
    void SetUp() override {
        SCREENWEAVER_ASSERT_X_SERVER();
        before = testing::readXServerState();
        started = true;
    }

    void TearDown() override {
        if (started) {
            EXPECT_EQ(testing::readXServerState(), before) << "the X server is not as it was before the test";
        }
    }

    [[nodiscard]] std::unique_ptr<X11DisplayProvider> open(
        const XCBRandRAPI& api = platform::x11::systemXCBRandR(),
        const platform::x11::XCBDPMSAPI* dpms = nullptr) {
        auto provider = X11DisplayProvider::open(debounceInterval, settleTimeout, api, dpms, clock);
        EXPECT_TRUE(provider) << provider.error().reason();
        return provider ? std::move(*provider) : nullptr;
    }

    [[nodiscard]] std::uint32_t dummy() const { return before.monitors.at(0).name; }

    /// Lets the burst of events a change caused end: every event read, the quiet period passed on
    /// the manual clock, the topology published.
    void settle(X11DisplayProvider& provider) {
        X11DisplayProviderTestApi::synchronizeEvents(provider);
        // Time moves only while the debouncer sleeps on the clock; once it has published, the flag
        // is down and it sleeps no more.
        while (X11DisplayProviderTestApi::burstInFlight(provider)) {
            if (clock.sleeperCount() > 0) {
                clock.advance(debounceInterval);
            }
            std::this_thread::yield();
        }
    }

    [[nodiscard]] std::vector<LogEntry> logged() const { return capture.entries("display"); }

    ScopedLogCapture capture;
    ManualClock clock;
    simulation::SelfAdvancingClock creationClock;
    VirtualDisplayManager displays{VirtualDisplayBackend::system(platform::PlatformAPI::system()),
                                   creationClock};
    testing::XServerState before;
    bool started = false;
};

TEST_F(X11Arrangement, ASnapshotListsEveryMonitorWithItsNumbersBoundsModeAndReference) {
    const VirtualDisplaySpec wide = spec(2560, 1440);
    const auto first = displays.create(wide, {});
    const auto second = displays.create(spec(1280, 1024), {});
    ASSERT_TRUE(first && second);
    const auto provider = open();
    ASSERT_TRUE(provider);
    const auto topology = provider->snapshot();
    ASSERT_TRUE(topology);
    ASSERT_EQ(topology->displays.size(), 3U);

    const LiveDisplay& output = topology->displays[0];
    EXPECT_EQ(output.displayID, dummy());
    EXPECT_EQ(output.ref, DisplayRef::physical("0-0-0")) << "the dummy output has no EDID";
    EXPECT_EQ(std::tuple(output.vendorNumber, output.modelNumber, output.serialNumber),
              std::tuple(0U, 0U, 0U));
    EXPECT_FALSE(output.isBuiltin);
    EXPECT_TRUE(output.isMain);
    EXPECT_FALSE(output.isAsleep);
    EXPECT_EQ(output.bounds, (Rect{{0, 0}, {2048, 1536}}));
    ASSERT_TRUE(output.currentMode);
    EXPECT_EQ(output.currentMode->pixelWidth, 2048);
    EXPECT_EQ(output.currentMode->pointHeight, 1536);
    EXPECT_NEAR(output.currentMode->refreshRate, 60.0, 0.01);

    EXPECT_EQ(topology->displays[1],
              (LiveDisplay{.displayID = first->displayID,
                           .ref = DisplayRef::virtualDisplay(wide.id),
                           .name = std::nullopt,
                           .vendorNumber = 0x5357,
                           .modelNumber = 1,
                           .serialNumber = VirtualDisplaySerial::serialNumber(wide.id),
                           .isBuiltin = false,
                           .isMain = false,
                           .isAsleep = false,
                           .bounds = Rect{{2048, 0}, {2560, 1440}},
                           .currentMode = DisplayModeInfo{2560, 1440, 2560, 1440, 0.0}}));
    EXPECT_EQ(topology->displays[2].bounds, (Rect{{2048 + 2560, 0}, {1280, 1024}}));
    EXPECT_EQ(logged(), (std::vector<LogEntry>{
                            {"org.screenweaver", "display", LogLevel::error,
                             "No ColorSync UUID for display " + std::to_string(dummy()) + "; using 0-0-0"}}));
    displays.release(*first, {});
    displays.release(*second, {});
}

TEST_F(X11Arrangement, AnOutputsModesAreItsRandRModesInTheListsOrder) {
    const auto provider = open();
    ASSERT_TRUE(provider);
    const auto modes = provider->availableModes(dummy());
    ASSERT_TRUE(modes);
    EXPECT_GT(modes->size(), 10U);
    EXPECT_EQ(*modes, ModeList::normalized(*modes));
    EXPECT_EQ(modes->front().pixelWidth, 2048);
    EXPECT_NEAR(modes->front().refreshRate, 60.0, 0.01);
    EXPECT_TRUE(std::ranges::all_of(*modes, [](const DisplayModeInfo& mode) {
        return mode.pointWidth == mode.pixelWidth && mode.pointHeight == mode.pixelHeight;
    }));
    EXPECT_EQ(provider->availableModes(1).error(), DisplayError::modeListUnavailable(1));
}

TEST_F(X11Arrangement, AMonitorWithoutAnOutputOffersItsOneSize) {
    const auto display = displays.create(spec(1920, 1200), {});
    ASSERT_TRUE(display);
    const auto provider = open();
    ASSERT_TRUE(provider);
    EXPECT_EQ(provider->availableModes(display->displayID),
              (std::vector<DisplayModeInfo>{{1920, 1200, 1920, 1200, 0.0}}));
    displays.release(*display, {});
}

// The EDID the dummy output lacks, handed in through the table: the property's reply is replaced
// by one that carries a real monitor's EDID.
namespace withEDID {
std::vector<std::uint8_t> blob;

xcb_randr_get_output_property_reply_t* reply(xcb_connection_t* c,
                                             xcb_randr_get_output_property_cookie_t cookie,
                                             xcb_generic_error_t** e) {
    std::free(xcb_randr_get_output_property_reply(c, cookie, e));
    auto* const fake = static_cast<xcb_randr_get_output_property_reply_t*>(
        std::calloc(1, sizeof(xcb_randr_get_output_property_reply_t) + blob.size()));
    fake->format = 8;
    fake->num_items = static_cast<std::uint32_t>(blob.size());
    fake->length = static_cast<std::uint32_t>((blob.size() + 3) / 4);
    std::memcpy(fake + 1, blob.data(), blob.size());
    return fake;
}
}  // namespace withEDID

std::vector<std::uint8_t> edidOf(const std::string& monitor) {
    std::ifstream file{std::string{SCREENWEAVER_FIXTURES_DIR} + "/edid/" + monitor + ".bin",
                       std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
}

TEST_F(X11Arrangement, AnOutputWithAnEDIDIsReferencedByItsMakerModelAndSerial) {
    XCBRandRAPI api = platform::x11::systemXCBRandR();
    api.xcb_randr_get_output_property_reply = &withEDID::reply;
    for (const auto& [monitor, ref, numbers] :
         {std::tuple{"monitor-01", "SAM0841-00000001", std::tuple(0x4C2DU, 0x0841U, 1U)},
          std::tuple{"monitor-04", "GSM757A-00043D54", std::tuple(0x1E6DU, 0x757AU, 277844U)}}) {
        withEDID::blob = edidOf(monitor);
        const auto provider = open(api);
        ASSERT_TRUE(provider);
        const auto topology = provider->snapshot();
        ASSERT_TRUE(topology);
        const LiveDisplay& output = topology->displays.at(0);
        EXPECT_EQ(output.ref, DisplayRef::physical(ref)) << monitor;
        EXPECT_EQ(std::tuple(output.vendorNumber, output.modelNumber, output.serialNumber), numbers)
            << monitor;
        EXPECT_EQ(provider->ref(output.displayID), DisplayRef::physical(ref));
    }
    withEDID::blob = edidOf("monitor-01");
    std::fill(withEDID::blob.begin() + 12, withEDID::blob.begin() + 16, 0);
    const auto provider = open(api);
    ASSERT_TRUE(provider);
    EXPECT_EQ(provider->snapshot()->displays.at(0).ref, DisplayRef::physical("SAM0841-DUMMY0"))
        << "without a serial, the connector names it";
    EXPECT_TRUE(logged().empty());
}

TEST_F(X11Arrangement, AReferenceOfADisplayNotOnlineIsTheFallback) {
    const auto provider = open();
    ASSERT_TRUE(provider);
    EXPECT_EQ(provider->ref(1), DisplayRef::physical("0-0-0"));
    EXPECT_EQ(logged().back().message, "No ColorSync UUID for display 1; using 0-0-0");
}

DisplayModeInfo fullHD(const X11DisplayProvider& provider, std::uint32_t displayID) {
    const auto modes = provider.availableModes(displayID);
    const auto found = std::ranges::find_if(*modes, [](const DisplayModeInfo& mode) {
        return mode.pixelWidth == 1920 && mode.pixelHeight == 1080;
    });
    return *found;
}

TEST_F(X11Arrangement, AnAppliedPlanLeavesTheServerShowingExactlyThePlannedFrames) {
    const auto a = displays.create(spec(1280, 1024), {});
    const auto b = displays.create(spec(1024, 768), {});
    ASSERT_TRUE(a && b);
    const auto provider = open();
    ASSERT_TRUE(provider);
    const DisplayModeInfo mode = fullHD(*provider, dummy());
    const DisplayModeInfo original = *provider->snapshot()->displays.at(0).currentMode;
    // b directly right of the output, a right of b, lower down.
    const LayoutPlan plan{.placements = {{b->displayID, {1920, 0}}, {a->displayID, {1920 + 1024, 100}}},
                          .modeChanges = {{dummy(), mode}},
                          .unmirror = {}};
    ASSERT_TRUE(provider->apply(plan, {}));
    const auto topology = provider->snapshot();
    ASSERT_TRUE(topology);
    std::vector<Rect> frames;
    for (const LiveDisplay& display : topology->displays) {
        frames.push_back(display.bounds);
    }
    EXPECT_EQ(frames,
              (std::vector<Rect>{
                  {{0, 0}, {1920, 1080}}, {{1920 + 1024, 100}, {1280, 1024}}, {{1920, 0}, {1024, 768}}}));
    EXPECT_EQ(topology->displays[0].currentMode, mode);
    EXPECT_EQ(testing::readXServerState().screen.width, 1920 + 1024 + 1280);
    const auto entries = logged();
    EXPECT_NE(std::ranges::find(
                  entries, LogEntry{"org.screenweaver", "display", LogLevel::defaultLevel,
                                    "Committed arrangement: 2 placements, 1 mode changes, 0 un-mirrored"}),
              entries.end());

    // Back as it was, for the server's sake.
    settle(*provider);
    ASSERT_TRUE(provider->apply({.placements = {{a->displayID, {2048, 0}}, {b->displayID, {2048 + 1280, 0}}},
                                 .modeChanges = {{dummy(), original}},
                                 .unmirror = {}},
                                {}));
    displays.release(*a, {});
    displays.release(*b, {});
}

TEST_F(X11Arrangement, AnArrangementReachingLeftOfTheScreenMovesRightAsAWhole) {
    const auto a = displays.create(spec(1280, 1024), {});
    ASSERT_TRUE(a);
    const auto provider = open();
    ASSERT_TRUE(provider);
    ASSERT_TRUE(
        provider->apply({.placements = {{a->displayID, {-1280, 0}}}, .modeChanges = {}, .unmirror = {}}, {}));
    const auto topology = provider->snapshot();
    EXPECT_EQ(topology->displays.at(0).bounds, (Rect{{1280, 0}, {2048, 1536}}));
    EXPECT_EQ(topology->displays.at(1).bounds, (Rect{{0, 0}, {1280, 1024}}));
    settle(*provider);
    ASSERT_TRUE(provider->apply(
        {.placements = {{dummy(), {0, 0}}, {a->displayID, {2048, 0}}}, .modeChanges = {}, .unmirror = {}},
        {}));
    displays.release(*a, {});
}

TEST_F(X11Arrangement, APlanTheValidatorRejectsChangesNothing) {
    const auto a = displays.create(spec(1280, 1024), {});
    ASSERT_TRUE(a);
    const auto provider = open();
    ASSERT_TRUE(provider);
    const testing::XServerState withDisplay = testing::readXServerState();
    const auto applied =
        provider->apply({.placements = {{a->displayID, {100, 100}}}, .modeChanges = {}, .unmirror = {}}, {});
    const std::string reason = "displays " + std::to_string(std::min(dummy(), a->displayID)) + " and " +
                               std::to_string(std::max(dummy(), a->displayID)) + " overlap";
    EXPECT_EQ(applied.error(), DisplayError::invalidLayout(reason));
    EXPECT_EQ(logged().back().message, "Rejected layout plan: invalidLayout(reason: \"" + reason + "\")");
    EXPECT_EQ(testing::readXServerState(), withDisplay);
    displays.release(*a, {});
}

TEST_F(X11Arrangement, AModeTheOutputDoesNotListIsRefusedBeforeAnythingChanges) {
    const auto provider = open();
    ASSERT_TRUE(provider);
    const DisplayModeInfo unknown{1920, 1080, 1920, 1080, 59.94};
    const auto applied =
        provider->apply({.placements = {}, .modeChanges = {{dummy(), unknown}}, .unmirror = {}}, {});
    EXPECT_EQ(applied.error(),
              DisplayError::configurationFailed(
                  "no mode matching DisplayModeInfo(pixelWidth: 1920, pixelHeight: 1080, pointWidth: 1920, "
                  "pointHeight: 1080, refreshRate: 59.94) on display " +
                  std::to_string(dummy())));
}

// The second monitor a commit adds goes out without a name: the server refuses it (BadAtom).
namespace secondMonitorRefused {
const XCBRandRAPI& real = platform::x11::systemXCBRandR();
int sent = 0;
unsigned int send(xcb_connection_t* c, int flags, iovec* vector, const xcb_protocol_request_t* request) {
    if (++sent == 2) {
        static_cast<xcb_randr_monitor_info_t*>(vector[1].iov_base)->name = XCB_ATOM_NONE;
    }
    return real.xcb_send_request(c, flags, vector, request);
}
}  // namespace secondMonitorRefused

TEST_F(X11Arrangement, ACommitFailingHalfwayPutsEverythingBack) {
    const auto a = displays.create(spec(1280, 1024), {});
    const auto b = displays.create(spec(1024, 768), {});
    ASSERT_TRUE(a && b);
    XCBRandRAPI api = platform::x11::systemXCBRandR();
    api.xcb_send_request = &secondMonitorRefused::send;
    secondMonitorRefused::sent = 0;
    const auto provider = open(api);
    ASSERT_TRUE(provider);
    const testing::XServerState withDisplays = testing::readXServerState();
    const DisplayModeInfo mode = fullHD(*provider, dummy());
    // The output's mode changes; then both monitors are deleted and added again in their order, a
    // (the first send) and b (the second, which fails).
    const auto applied =
        provider->apply({.placements = {{b->displayID, {1920, 0}}, {a->displayID, {1920 + 1024, 0}}},
                         .modeChanges = {{dummy(), mode}},
                         .unmirror = {}},
                        {});
    ASSERT_FALSE(applied);
    EXPECT_EQ(applied.error().description(),
              DisplayError::configurationFailed("origin change of display " + std::to_string(b->displayID) +
                                                " failed (X error 5)")
                  .description());
    EXPECT_EQ(testing::readXServerState(), withDisplays) << "every monitor exactly as it was";
    displays.release(*a, {});
    displays.release(*b, {});
}

TEST_F(X11Arrangement, ABurstOfChangesByAnotherClientPublishesOneTopology) {
    const auto provider = open();
    ASSERT_TRUE(provider);
    auto subscriber = provider->changes();
    auto stopped = std::make_optional(provider->changes());
    OtherClient other;
    // A wider screen, two monitors on it, one of them gone again.
    other.setScreenSize(RandRScreen::resized(before.screen, 2048 + 800, 1536));
    other.addMonitor("BURST-A", 2048, 800, 600);
    other.addMonitor("BURST-B", 2048, 800, 700);
    other.deleteMonitor("BURST-A");
    other.announce();
    EXPECT_EQ(X11DisplayProviderTestApi::subscriberCount(*provider), 2U);
    stopped.reset();
    EXPECT_EQ(X11DisplayProviderTestApi::subscriberCount(*provider), 1U) << "the stopped one is gone";
    X11DisplayProviderTestApi::synchronizeEvents(*provider);
    EXPECT_TRUE(X11DisplayProviderTestApi::burstInFlight(*provider));
    clock.waitForSleepers(1);
    clock.advance(debounceInterval - 1ns);
    clock.waitForSleepers(1);
    EXPECT_EQ(subscriber.tryNext(), std::nullopt) << "nothing before the quiet period ends";

    clock.advance(1ns);
    const auto published = subscriber.next();
    ASSERT_TRUE(published);
    EXPECT_EQ(published, provider->snapshot());
    ASSERT_EQ(published->displays.size(), 2U);
    EXPECT_EQ(published->displays[1].displayID, other.atom("BURST-B"));
    EXPECT_EQ(published->displays[1].bounds, (Rect{{2048, 0}, {800, 700}}));
    EXPECT_EQ(subscriber.tryNext(), std::nullopt) << "exactly one";
    EXPECT_FALSE(X11DisplayProviderTestApi::burstInFlight(*provider));

    other.deleteMonitor("BURST-B");
    other.setScreenSize(before.screen);
    settle(*provider);
    EXPECT_EQ(subscriber.next()->displays.size(), 1U);
}

TEST_F(X11Arrangement, TheSettleWaiterSeesADisplayAnotherConnectionMakes) {
    const auto provider = open();
    ASSERT_TRUE(provider);
    DisplaySettleWaiter waiter{provider->changes(),
                               [&provider]() -> std::optional<DisplayTopology> {
                                   auto topology = provider->snapshot();
                                   return topology ? std::optional{*topology} : std::nullopt;
                               },
                               settleTimeout, clock};
    auto settled = std::async(std::launch::async, [&] {
        return waiter.firstSettledTopology([](const DisplayTopology& topology) {
            return std::ranges::any_of(topology.displays, &LiveDisplay::isOurVirtualDisplay);
        });
    });
    clock.waitForSleepers(1);  // the waiter's timeout: the immediate snapshot held none of ours
    // The manager's connection is not the provider's.
    const auto made = displays.create(spec(1280, 800), {});
    ASSERT_TRUE(made);
    X11DisplayProviderTestApi::synchronizeEvents(*provider);
    clock.waitForSleepers(2);
    clock.advance(debounceInterval);
    const auto topology = settled.get();
    ASSERT_TRUE(topology);
    EXPECT_EQ(topology->displays.back().displayID, made->displayID);
    displays.release(*made, {});
}

TEST_F(X11Arrangement, TheEventThreadStopsWithTheProvider) {
    for (int round = 0; round < 3; ++round) {
        auto provider = open();
        ASSERT_TRUE(provider);
        X11DisplayProviderTestApi::synchronizeEvents(*provider);
    }
}

}  // namespace
}  // namespace screenweaver
