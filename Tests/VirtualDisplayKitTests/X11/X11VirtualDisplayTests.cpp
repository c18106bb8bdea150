// Virtual displays on a real X server (Xorg with the dummy driver): the manager's road, the probe's
// contract and the monitors they leave, or do not leave, behind.
#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

#include "CoreTypes/Model/VirtualDisplaySerial.hpp"
#include "CoreTypes/VirtualDisplayVendor.hpp"
#include "Platform/X11/VirtualMonitorName.hpp"
#include "X11Testing.hpp"

namespace screenweaver {
namespace {

using namespace std::chrono_literals;
using platform::x11::VirtualMonitorName;
using testing::OnTheXServer;

using X11VirtualDisplays = OnTheXServer;

TEST_F(X11VirtualDisplays, AreMadeAtTheirPixelSizeAndDensityAndGoWhenReleased) {
    const VirtualDisplaySpec wide = spec(5120, 1440);
    VirtualDisplayManager manager{backend(), clock};
    const auto handle = manager.create(wide, {});
    ASSERT_TRUE(handle) << handle.error().description();
    EXPECT_EQ(handle->acceptedPPI, 150.0);
    const auto shown = monitor(handle->displayID);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->width, 5120);
    EXPECT_EQ(shown->height, 1440);
    EXPECT_EQ(shown->widthInMillimeters, millimeters(5120, 150.0));
    EXPECT_EQ(shown->heightInMillimeters, millimeters(1440, 150.0));
    EXPECT_EQ(shown->x, 2048) << "right of the dummy output";
    EXPECT_EQ(shown->y, 0);
    EXPECT_EQ(testing::readXServerState().screen.width, 2048 + 5120);

    manager.release(*handle, {});
    EXPECT_FALSE(monitor(handle->displayID));
    EXPECT_EQ(logged(), (std::vector<LogEntry>{
                            {"org.screenweaver", "virtualDisplay", LogLevel::info,
                             "created virtual display " + std::to_string(handle->displayID) +
                                 " at 5120x1440, 150 PPI accepted"},
                            {"org.screenweaver", "virtualDisplay", LogLevel::info,
                             "released virtual display " + std::to_string(handle->displayID)},
                        }));
}

TEST_F(X11VirtualDisplays, AHiDPIDisplayIsMadeAtItsFullPixelSize) {
    VirtualDisplayManager manager{backend(), clock};
    const auto handle = manager.create(spec(3840, 2160, true), {});
    ASSERT_TRUE(handle) << handle.error().description();
    const auto shown = monitor(handle->displayID);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->width, 3840);
    EXPECT_EQ(shown->height, 2160);
    EXPECT_EQ(shown->widthInMillimeters, millimeters(3840, handle->acceptedPPI));
    EXPECT_EQ(shown->heightInMillimeters, millimeters(2160, handle->acceptedPPI));
    manager.release(*handle, {});
}

TEST_F(X11VirtualDisplays, TwoDisplaysAtOnceStandSideBySide) {
    VirtualDisplayManager manager{backend(), clock};
    const auto first = manager.create(spec(1920, 1080), {});
    const auto second = manager.create(spec(1280, 1024), {});
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->displayID, second->displayID);
    const auto left = monitor(first->displayID);
    const auto right = monitor(second->displayID);
    ASSERT_TRUE(left && right);
    EXPECT_EQ(left->x, 2048);
    EXPECT_EQ(left->width, 1920);
    EXPECT_EQ(right->x, 2048 + 1920);
    EXPECT_EQ(right->width, 1280);
    EXPECT_EQ(right->heightInMillimeters, millimeters(1024, 150.0));
    manager.release(*first, {});
    EXPECT_FALSE(monitor(first->displayID));
    EXPECT_TRUE(monitor(second->displayID));
    manager.release(*second, {});
}

TEST_F(X11VirtualDisplays, ASpecBeyondTheScreensMemoryFailsAfterEveryRungAndLeavesNothing) {
    // 22048x8000 pixels of screen need more than the dummy driver's 600000 KiB of video memory.
    VirtualDisplayManager manager{backend(), clock};
    const auto handle = manager.create(spec(20000, 8000), {});
    ASSERT_FALSE(handle);
    EXPECT_EQ(
        handle.error(),
        VirtualDisplayError::creationFailed(
            "the X server refused a display of 20000x8000: RRSetScreenSize failed (BadMatch, X error 8)"));
    const auto entries = logged();
    EXPECT_EQ(
        std::ranges::count_if(
            entries, [](const LogEntry& entry) { return entry.message.ends_with("PPI; dropping a rung"); }),
        4);
}

TEST_F(X11VirtualDisplays, ASpecWiderThanAnyMonitorIsRefusedAtEveryRung) {
    VirtualDisplayManager manager{backend(), clock};
    const auto handle = manager.create(spec(32768, 1080), {});
    ASSERT_FALSE(handle);
    EXPECT_EQ(handle.error(), VirtualDisplayError::creationFailed(
                                  "the X server refused a display of 32768x1080: no monitor is larger than "
                                  "32767x32767"));
}

using X11DisplayProbe = OnTheXServer;

TEST_F(X11DisplayProbe, ListsTheOutputsMonitorAndOursWithTheNumbersTheyCarry) {
    VirtualDisplayBackend made = backend();
    const auto probe = made.probe;
    VirtualDisplayManager manager{std::move(made), clock};
    const VirtualDisplaySpec wide = spec(2560, 1440);
    const auto handle = manager.create(wide, {});
    ASSERT_TRUE(handle);

    const auto displays = probe->activeDisplays();
    ASSERT_EQ(displays.size(), 2U);
    const auto& dummy = displays[0];
    EXPECT_EQ(dummy.displayID, before.monitors.at(0).name);
    EXPECT_EQ(before.monitors.at(0).nameText, "DUMMY0");
    EXPECT_EQ(dummy.vendorNumber, 0U) << "the dummy output has no EDID";
    EXPECT_EQ(dummy.mirrorSource, std::nullopt);
    EXPECT_EQ(dummy.pixelWidth, 2048);
    EXPECT_EQ(dummy.pixelHeight, 1536);
    EXPECT_EQ(displays[1], (LiveDisplaySnapshot{.displayID = handle->displayID,
                                                .vendorNumber = virtualDisplayVendorID,
                                                .serialNumber = VirtualDisplaySerial::serialNumber(wide.id),
                                                .mirrorSource = std::nullopt,
                                                .pixelWidth = 2560,
                                                .pixelHeight = 1440}));
    manager.release(*handle, {});
}

TEST_F(X11DisplayProbe, AMonitorsNameCarriesItsNumbersItsSpecAndItsOwner) {
    VirtualDisplayManager manager{backend(), clock};
    const VirtualDisplaySpec wide = spec(2560, 1440);
    const auto handle = manager.create(wide, {});
    ASSERT_TRUE(handle);
    const auto shown = monitor(handle->displayID);
    ASSERT_TRUE(shown);
    const auto parts = VirtualMonitorName::parse(shown->nameText);
    ASSERT_TRUE(parts) << shown->nameText;
    EXPECT_EQ(parts->vendorID, 0x5357U);
    EXPECT_EQ(parts->productID, 1U);
    EXPECT_EQ(parts->serialNumber, VirtualDisplaySerial::serialNumber(wide.id));
    EXPECT_EQ(parts->specID, wide.id);
    EXPECT_EQ(testing::readXServerState().rootWindows, before.rootWindows + 1) << "the owner window";
    EXPECT_TRUE(shown->nameText.starts_with("SCREENWEAVER:00005357:00000001:"));
    manager.release(*handle, {});
}

TEST_F(X11DisplayProbe, MovesAMirroringMonitorBesideTheOthers) {
    VirtualDisplayBackend made = backend();
    const auto probe = made.probe;
    VirtualDisplayManager manager{std::move(made), clock};
    const auto handle = manager.create(spec(2048, 1536), {});
    ASSERT_TRUE(handle);
    // Laid over the dummy output, it shows what the primary shows: it mirrors it.
    const auto shown = *monitor(handle->displayID);
    auto onTop = shown;
    onTop.x = 0;
    {
        auto connection = platform::x11::X11Connection::open(platform::x11::systemXCBRandR());
        ASSERT_TRUE(connection);
        const auto held = (*connection)->exclusive();
        const auto set = platform::x11::RandRScreen::replaceMonitor(**connection, shown, onTop);
        ASSERT_TRUE(set) << set.error().reason();
    }
    const auto mirrored = probe->activeDisplays();
    ASSERT_EQ(mirrored.size(), 2U);
    EXPECT_EQ(mirrored[1].mirrorSource, mirrored[0].displayID);
    EXPECT_EQ(mirrored[0].mirrorSource, std::nullopt);

    EXPECT_TRUE(probe->breakMirroring(handle->displayID));
    const auto apart = probe->activeDisplays();
    EXPECT_EQ(apart.at(1).mirrorSource, std::nullopt);
    EXPECT_EQ(monitor(handle->displayID)->x, 2048);
    EXPECT_TRUE(probe->breakMirroring(handle->displayID)) << "a monitor that mirrors nothing stays";
    manager.release(*handle, {});
}

TEST_F(X11DisplayProbe, ResizesItsOwnMonitorAndSwitchesAnOutputsMode) {
    VirtualDisplayBackend made = backend();
    const auto probe = made.probe;
    VirtualDisplayManager manager{std::move(made), clock};
    const auto handle = manager.create(spec(2560, 1440), {});
    ASSERT_TRUE(handle);
    EXPECT_TRUE(probe->selectMode(handle->displayID, 1920, 1080));
    const auto resized = monitor(handle->displayID);
    ASSERT_TRUE(resized);
    EXPECT_EQ(resized->width, 1920);
    EXPECT_EQ(resized->height, 1080);
    EXPECT_EQ(resized->widthInMillimeters, millimeters(1920, 150.0));

    const std::uint32_t dummy = before.monitors.at(0).name;
    EXPECT_TRUE(probe->selectMode(dummy, 1920, 1080));
    EXPECT_EQ(monitor(dummy)->width, 1920);
    EXPECT_FALSE(probe->selectMode(dummy, 1921, 1080)) << "the output lists no such mode";
    EXPECT_TRUE(probe->selectMode(dummy, 2048, 1536));
    manager.release(*handle, {});
}

TEST_F(X11DisplayProbe, CorrectsNothingOnAMonitorThatIsNotThere) {
    VirtualDisplayBackend made = backend();
    EXPECT_FALSE(made.probe->breakMirroring(1));
    EXPECT_FALSE(made.probe->selectMode(1, 1920, 1080));
}

}  // namespace
}  // namespace screenweaver
