#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <xcb/xcb.h>

#include "CoreTypes/CapturingLogSink.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "HeadlessXServer/HeadlessXServerEnvironment.hpp"
#include "HeadlessXServer/XServerState.hpp"
#include "Platform/PlatformAPI.hpp"
#include "SelfAdvancingClock.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver::testing {

/// A test on the program's headless X server: the server must look exactly the same at its end as
/// at its start, so every display made was removed and the screen is its old size again.
class OnTheXServer : public ::testing::Test {
public:
    static VirtualDisplaySpec spec(std::int64_t width, std::int64_t height, bool hiDPI = false) {
        return VirtualDisplaySpec{
            .id = UUID::random(),
            .name = "On the X server",
            .catalogEntryID = std::nullopt,
            .pixelWidth = width,
            .pixelHeight = height,
            .refreshRate = 60.0,
            .hiDPI = hiDPI,
            .rotation = 0,
            .dynamicRange = DynamicRange::standard,
            .targetPPIOverride = std::nullopt,
        };
    }

protected:
    void SetUp() override {
        SCREENWEAVER_ASSERT_X_SERVER();
        before = readXServerState();
        started = true;
    }

    void TearDown() override {
        if (started) {
            EXPECT_EQ(readXServerState(), before) << "the X server is not as it was before the test";
        }
    }

    /// A backend on the system's table, or on `api` (a copy with entries replaced).
    [[nodiscard]] static VirtualDisplayBackend backend(const platform::x11::XCBRandRAPI* api = nullptr) {
        platform::PlatformAPI platform = platform::PlatformAPI::system();
        if (api != nullptr) {
            platform.x11 = api;
        }
        return VirtualDisplayBackend::system(platform);
    }

    /// The monitor of `displayID` as the server shows it now.
    [[nodiscard]] static std::optional<platform::x11::RandRScreen::Monitor> monitor(std::uint32_t displayID) {
        for (const auto& shown : readXServerState().monitors) {
            if (shown.name == displayID) {
                return shown;
            }
        }
        return std::nullopt;
    }

    /// A side of `pixels` at `ppi`, in whole millimetres.
    static std::uint32_t millimeters(std::int64_t pixels, double ppi) {
        return static_cast<std::uint32_t>(std::lround(static_cast<double>(pixels) / ppi * 25.4));
    }

    [[nodiscard]] std::vector<LogEntry> logged() const { return capture.entries("virtualDisplay"); }

    ScopedLogCapture capture;
    simulation::SelfAdvancingClock clock;
    XServerState before;
    bool started = false;
};

/// Blocks (in real time, without limit) until the X server has destroyed `window`: a killed
/// client's resources go when the server notices its connection closed.
void waitUntilWindowIsGone(xcb_window_t window);

}  // namespace screenweaver::testing
