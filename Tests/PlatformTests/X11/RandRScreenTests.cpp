// The parts of the X platform that work on values alone: the refresh rate of a mode, which monitor
// mirrors which, the screen monitors need, and sizes scaled at a density.
#include <gtest/gtest.h>

#include "Platform/X11/RandRScreen.hpp"
#include "Platform/X11/X11Error.hpp"

namespace screenweaver::platform::x11 {
namespace {

using RandRScreen::Mode;
using RandRScreen::Monitor;

Monitor monitor(xcb_atom_t name, std::int16_t x, std::int16_t y, std::uint16_t width, std::uint16_t height,
                bool primary = false) {
    return Monitor{.name = name,
                   .nameText = {},
                   .primary = primary,
                   .automatic = false,
                   .x = x,
                   .y = y,
                   .width = width,
                   .height = height,
                   .widthInMillimeters = 0,
                   .heightInMillimeters = 0,
                   .outputs = {}};
}

TEST(RandRMode, RefreshesAtTheDotClockOverItsTotals) {
    // 2048x1536 as the dummy driver lists it: 266.95 MHz over 2800 x 1589.
    const Mode mode{.id = 1,
                    .width = 2048,
                    .height = 1536,
                    .dotClock = 266950000,
                    .hTotal = 2800,
                    .vTotal = 1589,
                    .flags = 0};
    EXPECT_DOUBLE_EQ(mode.refreshRate(), 266950000.0 / (2800.0 * 1589.0));
}

TEST(RandRMode, DoublesAnInterlacedRateAndHalvesADoubleScannedOne) {
    Mode mode{.id = 1,
              .width = 1920,
              .height = 1080,
              .dotClock = 74250000,
              .hTotal = 2200,
              .vTotal = 1125,
              .flags = XCB_RANDR_MODE_FLAG_INTERLACE};
    EXPECT_DOUBLE_EQ(mode.refreshRate(), 60.0);
    mode.flags = XCB_RANDR_MODE_FLAG_DOUBLE_SCAN;
    EXPECT_DOUBLE_EQ(mode.refreshRate(), 15.0);
}

TEST(RandRMode, RefreshesAtZeroWithoutTotals) {
    EXPECT_EQ((Mode{.id = 1, .width = 1, .height = 1, .dotClock = 1, .hTotal = 0, .vTotal = 1, .flags = 0}
                   .refreshRate()),
              0.0);
}

TEST(RandRMirrors, AMonitorOverThePrimaryMirrorsIt) {
    const auto sources = RandRScreen::mirrorSources(
        {monitor(7, 0, 0, 1920, 1080), monitor(3, 0, 0, 1920, 1080, true), monitor(9, 1920, 0, 1280, 1024)});
    EXPECT_EQ(sources, (std::vector<std::optional<xcb_atom_t>>{3, std::nullopt, std::nullopt}));
}

TEST(RandRMirrors, WithoutAPrimaryTheFirstListedIsShown) {
    const auto sources = RandRScreen::mirrorSources(
        {monitor(7, 0, 0, 1920, 1080), monitor(3, 0, 0, 1920, 1080), monitor(5, 0, 0, 1920, 1080)});
    EXPECT_EQ(sources, (std::vector<std::optional<xcb_atom_t>>{std::nullopt, 7, 7}));
}

TEST(RandRMirrors, OverlappingIsNotMirroring) {
    const auto sources =
        RandRScreen::mirrorSources({monitor(1, 0, 0, 1920, 1080), monitor(2, 0, 0, 1920, 1200)});
    EXPECT_EQ(sources, (std::vector<std::optional<xcb_atom_t>>{std::nullopt, std::nullopt}));
}

TEST(RandRScreenExtent, HoldsEveryMonitorFromTheOrigin) {
    EXPECT_EQ(RandRScreen::extentOf({monitor(1, 0, 0, 2048, 1536), monitor(2, 2048, 100, 5120, 1440)}),
              (std::pair<std::uint32_t, std::uint32_t>{7168, 1540}));
    EXPECT_EQ(RandRScreen::extentOf({}), (std::pair<std::uint32_t, std::uint32_t>{0, 0}));
}

TEST(RandRScreenSize, ScalesItsMillimetresAtItsDensity) {
    const RandRScreen::ScreenSize size{
        .width = 2048, .height = 1536, .widthInMillimeters = 541, .heightInMillimeters = 406};
    EXPECT_EQ(RandRScreen::resized(size, 7168, 1536),
              (RandRScreen::ScreenSize{
                  .width = 7168, .height = 1536, .widthInMillimeters = 1894, .heightInMillimeters = 406}));
    EXPECT_EQ(RandRScreen::scaledMillimeters(867, 1920, 5120), 325U);
    EXPECT_EQ(RandRScreen::scaledMillimeters(867, 1920, 0), 867U) << "nothing to scale from";
}

TEST(X11Error, SaysWhatWentWrongInPlainWords) {
    EXPECT_EQ(X11Error::requestFailed("RRSetScreenSize", 8).reason(),
              "RRSetScreenSize failed (BadMatch, X error 8)");
    EXPECT_EQ(X11Error::requestFailed("RRSetMonitor", 147).reason(), "RRSetMonitor failed (X error 147)");
    EXPECT_EQ(X11Error::requestRefused("RRSetCrtcConfig", "invalid configuration time").reason(),
              "RRSetCrtcConfig refused (invalid configuration time)");
    EXPECT_EQ(X11Error::connectionLost().reason(), "the connection to the X server was lost");
    EXPECT_EQ(X11Error::connectionFailed("no X display is named (DISPLAY is not set)").reason(),
              "no X display is named (DISPLAY is not set)");
}

TEST(X11Error, HasTheTextualFormOfACase) {
    EXPECT_EQ(X11Error::requestFailed("RRSetMonitor", 8).description(),
              "requestFailed(request: \"RRSetMonitor\", errorCode: 8)");
    EXPECT_EQ(X11Error::connectionLost().description(), "connectionLost");
    EXPECT_EQ(X11Error::extensionMissing("x").description(), "extensionMissing(reason: \"x\")");
}

}  // namespace
}  // namespace screenweaver::platform::x11
