#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "Platform/CFRef.hpp"
#include "Platform/CFStrings.hpp"
#include "SimulatorFixture.hpp"

namespace screenweaver::simulation {
namespace {

using platform::CFRef;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowServerSimulatorDisplays : public SimulatorFixture {
protected:
    SimulatedDisplay scaledDisplay(CGDirectDisplayID displayID) {
        SimulatedDisplay display;
        display.displayID = displayID;
        display.vendorNumber = 1552;
        display.modelNumber = 4;
        display.serialNumber = 7;
        display.colorSyncUUID = "37d8832a-2d66-02ca-b9f7-8f30a301b230";
        display.builtin = true;
        display.modes = {
            SimulatedMode{3840, 2160, 1920, 1080, 60.0, false},
            SimulatedMode{1920, 1080, 1920, 1080, 60.0, true},
            SimulatedMode{2560, 1440, 2560, 1440, 60.0, false},
        };
        display.currentMode = 0;
        return display;
    }

    CFRef<CFDictionaryRef> duplicateModesOptions() {
        const void* keys[] = {cg.kCGDisplayShowDuplicateLowResolutionModes};
        const void* values[] = {cf.kCFBooleanTrue};
        return CFRef<CFDictionaryRef>::adopt(
            cf, cf.CFDictionaryCreate(cf.kCFAllocatorDefault, keys, values, 1,
                                      cf.kCFTypeDictionaryKeyCallBacks, cf.kCFTypeDictionaryValueCallBacks));
    }

    std::vector<std::string> pixelSizes(CFArrayRef modes) {
        std::vector<std::string> sizes;
        for (CFIndex index = 0; index < cf.CFArrayGetCount(modes); ++index) {
            const auto mode =
                static_cast<CGDisplayModeRef>(const_cast<void*>(cf.CFArrayGetValueAtIndex(modes, index)));
            sizes.push_back(std::to_string(cg.CGDisplayModeGetPixelWidth(mode)) + "x" +
                            std::to_string(cg.CGDisplayModeGetPixelHeight(mode)));
        }
        return sizes;
    }
};

TEST_F(WindowServerSimulatorDisplays, CountsActiveDisplaysWhenGivenNoList) {
    simulator.addDisplay(makeDisplay(1, 1920, 1080));
    simulator.addDisplay(makeDisplay(2, 2560, 1440));
    uint32_t count = 99;
    EXPECT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    EXPECT_EQ(count, 2u);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, FillsActiveDisplayListOnlyAfterCountingIt) {
    simulator.addDisplay(makeDisplay(1, 1920, 1080));
    simulator.addDisplay(makeDisplay(2, 2560, 1440));
    simulator.addDisplay(makeDisplay(3, 1280, 1024));
    uint32_t count = 0;
    ASSERT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    std::vector<CGDirectDisplayID> ids(count, 0);
    uint32_t filled = 0;
    ASSERT_EQ(cg.CGGetActiveDisplayList(2, ids.data(), &filled), kCGErrorSuccess);
    EXPECT_EQ(filled, 2u);
    EXPECT_THAT(ids, ElementsAre(1u, 2u, 0u));
    EXPECT_THAT(simulator.calls(CallFamily::coreGraphics),
                ElementsAre("CGGetActiveDisplayList(maxDisplays=0, activeDisplays=NULL)",
                            "CGGetActiveDisplayList(maxDisplays=2, activeDisplays=buffer)"));
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, ListsTheMainDisplayFirst) {
    simulator.addDisplay(makeDisplay(1, 1920, 1080));
    SimulatedDisplay second = makeDisplay(2, 2560, 1440);
    second.main = true;
    simulator.addDisplay(second);
    EXPECT_THAT(simulator.activeDisplayIDs(), ElementsAre(2u, 1u));
    EXPECT_EQ(cg.CGDisplayIsMain(2), 1);
    EXPECT_EQ(cg.CGDisplayIsMain(1), 0);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, FailsTheSecondEnumerationCallWhenToldTo) {
    simulator.addDisplay(makeDisplay(1, 1920, 1080));
    simulator.failCalls("CGGetActiveDisplayList",
                        Failure{.error = kCGErrorCannotComplete, .skip = 1, .count = 1});
    uint32_t count = 0;
    EXPECT_EQ(cg.CGGetActiveDisplayList(0, nullptr, &count), kCGErrorSuccess);
    CGDirectDisplayID id = 0;
    EXPECT_EQ(cg.CGGetActiveDisplayList(1, &id, &count), kCGErrorCannotComplete);
    EXPECT_EQ(cg.CGGetActiveDisplayList(1, &id, &count), kCGErrorSuccess);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, ReportsTheDisplaysProperties) {
    SimulatedDisplay display = scaledDisplay(5);
    display.origin = CGPoint{-1920, 0};
    display.mirrorSource = 0;
    simulator.addDisplay(display);
    SimulatedDisplay other = makeDisplay(6, 1280, 1024);
    other.asleep = true;
    other.mirrorSource = 5;
    simulator.addDisplay(other);

    EXPECT_EQ(cg.CGDisplayVendorNumber(5), 1552u);
    EXPECT_EQ(cg.CGDisplayModelNumber(5), 4u);
    EXPECT_EQ(cg.CGDisplaySerialNumber(5), 7u);
    EXPECT_EQ(cg.CGDisplayIsBuiltin(5), 1);
    EXPECT_EQ(cg.CGDisplayIsAsleep(5), 0);
    EXPECT_EQ(cg.CGDisplayIsAsleep(6), 1);
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(5), 0u);
    EXPECT_EQ(cg.CGDisplayMirrorsDisplay(6), 5u);
    // The current mode is 3840x2160 pixels over 1920x1080 points; as on a Mac, the "pixels" calls
    // answer its points.
    EXPECT_EQ(cg.CGDisplayPixelsWide(5), 1920u);
    EXPECT_EQ(cg.CGDisplayPixelsHigh(5), 1080u);
    const CGRect bounds = cg.CGDisplayBounds(5);
    EXPECT_EQ(bounds.origin.x, -1920);
    EXPECT_EQ(bounds.origin.y, 0);
    EXPECT_EQ(bounds.size.width, 1920);
    EXPECT_EQ(bounds.size.height, 1080);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, HandsOutAnOwnedCopyOfTheCurrentMode) {
    simulator.addDisplay(scaledDisplay(1));
    const CGDisplayModeRef mode = cg.CGDisplayCopyDisplayMode(1);
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(cf.CFGetTypeID(mode), cg.CGDisplayModeGetTypeID());
    EXPECT_EQ(cg.CGDisplayModeGetPixelWidth(mode), 3840u);
    EXPECT_EQ(cg.CGDisplayModeGetPixelHeight(mode), 2160u);
    EXPECT_EQ(cg.CGDisplayModeGetWidth(mode), 1920u);
    EXPECT_EQ(cg.CGDisplayModeGetHeight(mode), 1080u);
    EXPECT_EQ(cg.CGDisplayModeGetRefreshRate(mode), 60.0);
    EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("leaked 3840x2160/1920x1080@60.0 (retain count 1)"));
    cg.CGDisplayModeRelease(mode);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, HasNoCurrentModeToCopyWhenTheDisplayHasNone) {
    SimulatedDisplay display = makeDisplay(1, 1920, 1080);
    display.currentMode.reset();
    simulator.addDisplay(display);
    EXPECT_EQ(cg.CGDisplayCopyDisplayMode(1), nullptr);
    EXPECT_EQ(cg.CGDisplayBounds(1).size.width, 0);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, ListsLowResolutionDuplicatesOnlyWhenAskedFor) {
    simulator.addDisplay(scaledDisplay(1));
    const auto plain = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(1, nullptr));
    EXPECT_THAT(pixelSizes(plain.get()), ElementsAre("3840x2160", "2560x1440"));
    const auto options = duplicateModesOptions();
    const auto all = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(1, options.get()));
    EXPECT_EQ(cf.CFGetTypeID(all.get()), cf.CFArrayGetTypeID());
    EXPECT_THAT(pixelSizes(all.get()), ElementsAre("3840x2160", "1920x1080", "2560x1440"));
    EXPECT_THAT(simulator.calls(CallFamily::coreGraphics),
                Contains("CGDisplayCopyAllDisplayModes(display=1, "
                         "options={kCGDisplayShowDuplicateLowResolutionModes: true})"));
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, ReleasesTheModesOfACopiedListWithTheList) {
    simulator.addDisplay(scaledDisplay(1));
    const CFArrayRef modes = cg.CGDisplayCopyAllDisplayModes(1, nullptr);
    const auto kept = static_cast<CGDisplayModeRef>(const_cast<void*>(cf.CFArrayGetValueAtIndex(modes, 0)));
    cg.CGDisplayModeRetain(kept);
    cf.CFRelease(modes);
    EXPECT_EQ(simulator.hygieneProblems().size(), 1u);
    EXPECT_EQ(cg.CGDisplayModeGetPixelWidth(kept), 3840u);
    cg.CGDisplayModeRelease(kept);
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, AnswersTheScriptedKindOfModeList) {
    SimulatedDisplay display = scaledDisplay(1);
    display.modeListAnswer = ModeListAnswer::none;
    simulator.addDisplay(display);
    EXPECT_EQ(cg.CGDisplayCopyAllDisplayModes(1, nullptr), nullptr);

    simulator.editDisplayQuietly(
        1, [](SimulatedDisplay& edited) { edited.modeListAnswer = ModeListAnswer::notAnArray; });
    auto notAnArray = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(1, nullptr));
    EXPECT_NE(cf.CFGetTypeID(notAnArray.get()), cf.CFArrayGetTypeID());

    simulator.editDisplayQuietly(
        1, [](SimulatedDisplay& edited) { edited.modeListAnswer = ModeListAnswer::emptyArray; });
    auto empty = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(1, nullptr));
    EXPECT_EQ(cf.CFArrayGetCount(empty.get()), 0);

    simulator.editDisplayQuietly(
        1, [](SimulatedDisplay& edited) { edited.modeListAnswer = ModeListAnswer::arrayOfNonModes; });
    auto strings = CFRef<CFArrayRef>::adopt(cf, cg.CGDisplayCopyAllDisplayModes(1, nullptr));
    ASSERT_EQ(cf.CFArrayGetCount(strings.get()), 2);
    EXPECT_NE(cf.CFGetTypeID(cf.CFArrayGetValueAtIndex(strings.get(), 0)), cg.CGDisplayModeGetTypeID());
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, RendersTheColorSyncUUIDInUpperCase) {
    simulator.addDisplay(scaledDisplay(1));
    const CFUUIDRef uuid = colorSync.CGDisplayCreateUUIDFromDisplayID(1);
    ASSERT_NE(uuid, nullptr);
    const auto text = CFRef<CFStringRef>::adopt(cf, cf.CFUUIDCreateString(cf.kCFAllocatorDefault, uuid));
    cf.CFRelease(uuid);
    EXPECT_EQ(platform::utf8String(cf, text.get()), "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    simulator.waitForCallbacks();
}

TEST_F(WindowServerSimulatorDisplays, HasNoUUIDForADisplayWithoutOne) {
    simulator.addDisplay(makeDisplay(1, 1920, 1080));
    EXPECT_EQ(colorSync.CGDisplayCreateUUIDFromDisplayID(1), nullptr);
    EXPECT_EQ(colorSync.CGDisplayCreateUUIDFromDisplayID(9), nullptr);
    simulator.waitForCallbacks();
}

TEST(WindowServerSimulatorHygiene, ReportsReleasingADeadObjectAsMisuse) {
    ManualClock clock;
    WindowServerSimulator simulator{clock};
    const platform::CoreFoundationAPI& cf = *simulator.platform().coreFoundation;
    const auto string = cf.CFStringCreateWithCString(cf.kCFAllocatorDefault, "once", kCFStringEncodingUTF8);
    EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("leaked \"once\" (retain count 1)"));
    cf.CFRelease(string);
    EXPECT_THAT(simulator.hygieneProblems(), IsEmpty());
    cf.CFRelease(string);
    EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("CFRelease was given <not an object>"));
}

TEST(WindowServerSimulatorHygiene, ReportsOpenPoolsConfigurationsAndCallbacks) {
    ManualClock clock;
    WindowServerSimulator simulator{clock};
    const platform::PlatformAPI platform = simulator.platform();
    void* const pool = platform.objcRuntime->objc_autoreleasePoolPush();
    CGDisplayConfigRef config = nullptr;
    ASSERT_EQ(platform.coreGraphics->CGBeginDisplayConfiguration(&config), kCGErrorSuccess);
    const auto callback = [](CGDirectDisplayID, CGDisplayChangeSummaryFlags, void*) {};
    ASSERT_EQ(platform.coreGraphics->CGDisplayRegisterReconfigurationCallback(callback, nullptr),
              kCGErrorSuccess);
    EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("1 autorelease pool(s) left open",
                                                         "configuration 1 neither completed nor cancelled",
                                                         "1 reconfiguration callback(s) still registered"));
    platform.objcRuntime->objc_autoreleasePoolPop(pool);
    EXPECT_EQ(platform.coreGraphics->CGCancelDisplayConfiguration(config), kCGErrorSuccess);
    EXPECT_EQ(platform.coreGraphics->CGDisplayRemoveReconfigurationCallback(callback, nullptr),
              kCGErrorSuccess);
    EXPECT_THAT(simulator.hygieneProblems(), IsEmpty());
}

TEST_F(WindowServerSimulatorDisplays, ReadsUnicodeTextBackAsUTF8) {
    const auto text = platform::makeCFString(cf, "Écran \xF0\x9F\x96\xA5");
    ASSERT_TRUE(text);
    EXPECT_EQ(cf.CFStringGetLength(text.get()), 8);
    EXPECT_EQ(platform::utf8String(cf, text.get()), "Écran \xF0\x9F\x96\xA5");
    EXPECT_FALSE(platform::makeCFString(cf, "\xC3"));
}

TEST_F(WindowServerSimulatorDisplays, HandsOutTheUserInitiatedGlobalQueue) {
    EXPECT_NE(dispatch.dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), nullptr);
    EXPECT_EQ(dispatch.dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 1), nullptr);
    EXPECT_THAT(simulator.calls(CallFamily::dispatch),
                ElementsAre("dispatch_get_global_queue(identifier=QOS_CLASS_USER_INITIATED, flags=0)",
                            "dispatch_get_global_queue(identifier=QOS_CLASS_USER_INITIATED, flags=1)"));
}

}  // namespace
}  // namespace screenweaver::simulation
