#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "Platform/CFRef.hpp"
#include "Platform/CFStrings.hpp"
#include "Platform/ObjCRuntime.hpp"
#include "Platform/TollFreeBridging.hpp"
#include "SimulatorFixture.hpp"

namespace screenweaver::simulation {
namespace {

using platform::CFRef;
using platform::ObjCRef;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

// Drives the private classes the way a builder of virtual displays does.
class WindowServerSimulatorVirtualDisplays : public SimulatorFixture {
protected:
    void SetUp() override {
        simulator.addDisplay(makeDisplay(1, 1920, 1080));
        simulator.waitForCallbacks();
    }

    ObjCRef makeDescriptor(uint32_t width, uint32_t height, CGSize millimetres) {
        ObjCRef descriptor =
            runtime.make(runtime.lookUpClass("CGVirtualDisplayDescriptor"), runtime.selector("init"));
        const auto name = platform::makeCFString(cf, "Screenweaver");
        const auto queue =
            static_cast<dispatch_queue_t>(dispatch.dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0));
        runtime.send<void>(descriptor.get(), runtime.selector("setQueue:"), queue);
        runtime.send<void>(descriptor.get(), runtime.selector("setName:"),
                           platform::bridgeToObjC(name.get()));
        runtime.send<void>(descriptor.get(), runtime.selector("setMaxPixelsWide:"), width);
        runtime.send<void>(descriptor.get(), runtime.selector("setMaxPixelsHigh:"), height);
        runtime.send<void>(descriptor.get(), runtime.selector("setSizeInMillimeters:"), millimetres);
        runtime.send<void>(descriptor.get(), runtime.selector("setSerialNum:"), uint32_t{0xABCD});
        runtime.send<void>(descriptor.get(), runtime.selector("setVendorID:"), uint32_t{0x5357});
        runtime.send<void>(descriptor.get(), runtime.selector("setProductID:"), uint32_t{1});
        return descriptor;
    }

    ObjCRef makeSettings(uint32_t width, uint32_t height, bool hiDPI) {
        ObjCRef settings =
            runtime.make(runtime.lookUpClass("CGVirtualDisplaySettings"), runtime.selector("init"));
        const ObjCRef mode =
            runtime.make(runtime.lookUpClass("CGVirtualDisplayMode"),
                         runtime.selector("initWithWidth:height:refreshRate:"), width, height, 60.0);
        const void* values[] = {platform::bridgeToCF(mode.get())};
        const auto modes =
            CFRef<CFArrayRef>::adopt(cf, cf.CFArrayCreate(nullptr, values, 1, cf.kCFTypeArrayCallBacks));
        runtime.send<void>(settings.get(), runtime.selector("setModes:"),
                           platform::bridgeToObjC(modes.get()));
        runtime.send<void>(settings.get(), runtime.selector("setHiDPI:"), static_cast<unsigned int>(hiDPI));
        runtime.send<void>(settings.get(), runtime.selector("setRotation:"), uint32_t{0});
        return settings;
    }

    // A display of `width` by `height` pixels at 150 pixels per inch, HiDPI (modes in points).
    ObjCRef createDisplay(uint32_t width = 5120, uint32_t height = 1440) {
        const double inch = 25.4 / 150.0;
        const ObjCRef descriptor = makeDescriptor(width, height, CGSize{width * inch, height * inch});
        ObjCRef display = runtime.make(runtime.lookUpClass("CGVirtualDisplay"),
                                       runtime.selector("initWithDescriptor:"), descriptor.get());
        if (!display) {
            return display;
        }
        const ObjCRef settings = makeSettings(width / 2, height / 2, true);
        if (!runtime.send<BOOL>(display.get(), runtime.selector("applySettings:"), settings.get())) {
            display.reset();
        }
        return display;
    }

    platform::ObjCRuntime runtime{objc};
};

TEST_F(WindowServerSimulatorVirtualDisplays, ShowsACreatedDisplayWithItsDescriptorsNumbers) {
    const ObjCRef display = createDisplay();
    ASSERT_TRUE(display);
    const unsigned int displayID = runtime.send<unsigned int>(display.get(), runtime.selector("displayID"));
    EXPECT_NE(displayID, 0u);
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u, displayID));
    EXPECT_EQ(cg.CGDisplayVendorNumber(displayID), 0x5357u);
    EXPECT_EQ(cg.CGDisplaySerialNumber(displayID), 0xABCDu);
    EXPECT_EQ(cg.CGDisplayModelNumber(displayID), 1u);
    // HiDPI: 5120x1440 pixels over 2560x720 points, and the "pixels" calls answer points, as on a Mac.
    EXPECT_EQ(cg.CGDisplayPixelsWide(displayID), 2560u);
    EXPECT_EQ(cg.CGDisplayPixelsHigh(displayID), 720u);
    const CGDisplayModeRef mode = cg.CGDisplayCopyDisplayMode(displayID);
    EXPECT_EQ(cg.CGDisplayModeGetPixelWidth(mode), 5120u);
    EXPECT_EQ(cg.CGDisplayModeGetPixelHeight(mode), 1440u);
    cg.CGDisplayModeRelease(mode);
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(displayID), 0u);
    EXPECT_EQ(cg.CGDisplayBounds(displayID).origin.x, 1920);

    const auto records = simulator.virtualDisplays();
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].descriptor.name, "Screenweaver");
    EXPECT_EQ(records[0].descriptor.queue, "QOS_CLASS_USER_INITIATED");
    EXPECT_EQ(records[0].descriptor.maxPixelsWide, 5120u);
    ASSERT_TRUE(records[0].settings);
    EXPECT_THAT(records[0].settings->modes, ElementsAre(ModeValues{2560, 720, 60.0, std::nullopt}));
    EXPECT_EQ(records[0].settings->hiDPI, 1u);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, RemovesTheDisplayWhenItsLastReferenceGoes) {
    ObjCRef display = createDisplay();
    const unsigned int displayID = runtime.send<unsigned int>(display.get(), runtime.selector("displayID"));
    ObjCRef second = runtime.retain(display.get());
    display.reset();
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u, displayID));
    second.reset();
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u));
    EXPECT_FALSE(simulator.virtualDisplays()[0].alive);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, ShowsALateDisplayOnlyWhenItsDelayHasPassed) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.appearanceDelay = 300ms});
    const ObjCRef display = createDisplay();
    const unsigned int displayID = runtime.send<unsigned int>(display.get(), runtime.selector("displayID"));
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u));
    clock.advance(299ms);
    uint32_t count = 0;
    ASSERT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    EXPECT_EQ(count, 1u);
    clock.advance(1ms);
    ASSERT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(cg.CGDisplayVendorNumber(displayID), 0x5357u);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, RefusesDescriptorsAboveTheScriptedDensity) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.refuseDescriptorsAboveDensity = 140.0});
    EXPECT_FALSE(createDisplay());
    EXPECT_EQ(simulator.descriptorAttempts(), 1u);
    EXPECT_THAT(simulator.virtualDisplays(), IsEmpty());
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.refuseDescriptorsAboveDensity = 150.0});
    EXPECT_TRUE(createDisplay());
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, RefusesTheScriptedAttempts) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.refuseAttempts = {true, false}});
    EXPECT_FALSE(createDisplay());
    EXPECT_TRUE(createDisplay());
    EXPECT_EQ(simulator.descriptorAttempts(), 2u);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, ShowsNothingWhenSettingsAreRejected) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.rejectSettings = true});
    EXPECT_FALSE(createDisplay());
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(1u));
    EXPECT_THAT(simulator.calls(CallFamily::messages), Contains("-[CGVirtualDisplay release]"));
    ASSERT_EQ(simulator.virtualDisplays().size(), 1u);
    EXPECT_FALSE(simulator.virtualDisplays()[0].alive);
}

TEST_F(WindowServerSimulatorVirtualDisplays, BringsADisplayUpMirroredAtAnotherSize) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{
        .appearsMirrored = true, .appearsAtPixelSize = std::pair<std::size_t, std::size_t>{1920, 1080}});
    const ObjCRef display = createDisplay();
    const unsigned int displayID = runtime.send<unsigned int>(display.get(), runtime.selector("displayID"));
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(displayID), 1u);
    const CGDisplayModeRef mode = cg.CGDisplayCopyDisplayMode(displayID);
    EXPECT_EQ(cg.CGDisplayModeGetPixelWidth(mode), 1920u);
    EXPECT_EQ(cg.CGDisplayModeGetPixelHeight(mode), 1080u);
    cg.CGDisplayModeRelease(mode);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, AnswersZeroAsItsIDWhenScripted) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.answersZeroDisplayID = true});
    const ObjCRef display = createDisplay();
    EXPECT_EQ(runtime.send<unsigned int>(display.get(), runtime.selector("displayID")), 0u);
    EXPECT_EQ(simulator.activeDisplayIDs().size(), 2u);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, RefusesAModeSwitchWhenScripted) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.acceptsModeSwitch = false});
    const ObjCRef display = createDisplay();
    const unsigned int displayID = runtime.send<unsigned int>(display.get(), runtime.selector("displayID"));
    const auto modes = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(displayID, nullptr));
    const auto mode =
        static_cast<CGDisplayModeRef>(const_cast<void*>(cf.CFArrayGetValueAtIndex(modes.get(), 0)));
    EXPECT_EQ(cg.CGDisplaySetDisplayMode(displayID, mode, nullptr), kCGErrorCannotComplete);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorVirtualDisplays, RecordsTheWholeConversation) {
    simulator.clearCalls();
    const ObjCRef display = createDisplay(2560, 1440);
    EXPECT_THAT(
        simulator.calls(CallFamily::messages),
        ElementsAre("+[CGVirtualDisplayDescriptor alloc]", "-[CGVirtualDisplayDescriptor init]",
                    "-[CGVirtualDisplayDescriptor setQueue: <global queue QOS_CLASS_USER_INITIATED>]",
                    "-[CGVirtualDisplayDescriptor setName: \"Screenweaver\"]",
                    "-[CGVirtualDisplayDescriptor setMaxPixelsWide: 2560]",
                    "-[CGVirtualDisplayDescriptor setMaxPixelsHigh: 1440]",
                    "-[CGVirtualDisplayDescriptor setSizeInMillimeters: (433.49333333333334, 243.84)]",
                    "-[CGVirtualDisplayDescriptor setSerialNum: 43981]",
                    "-[CGVirtualDisplayDescriptor setVendorID: 21335]",
                    "-[CGVirtualDisplayDescriptor setProductID: 1]", "+[CGVirtualDisplay alloc]",
                    "-[CGVirtualDisplay initWithDescriptor: <CGVirtualDisplayDescriptor>]",
                    "+[CGVirtualDisplaySettings alloc]", "-[CGVirtualDisplaySettings init]",
                    "+[CGVirtualDisplayMode alloc]",
                    "-[CGVirtualDisplayMode initWithWidth: 1280 height: 720 refreshRate: 60.0]",
                    "-[CGVirtualDisplaySettings setModes: [<CGVirtualDisplayMode 1280x720@60.0>]]",
                    "-[CGVirtualDisplaySettings setHiDPI: 1]", "-[CGVirtualDisplaySettings setRotation: 0]",
                    "-[CGVirtualDisplayMode release]",
                    "-[CGVirtualDisplay applySettings: <CGVirtualDisplaySettings>]",
                    "-[CGVirtualDisplaySettings release]", "-[CGVirtualDisplayDescriptor release]"));
    simulator.waitForCallbacks();
}

}  // namespace
}  // namespace screenweaver::simulation
