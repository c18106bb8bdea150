#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "SimulatedMachine.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/PrivateAPI/PrivateAPIResolver.hpp"
#include "VirtualDisplayKit/VirtualDisplayManager.hpp"

namespace screenweaver {
namespace {

using testing::SimulatedMachine;
using PrivateAPIResolution = SimulatedMachine;

const std::string doesNotExpose =
    "This version of macOS does not expose the interface used to create virtual displays.";

std::vector<std::string> classLookups(const simulation::WindowServerSimulator& simulator) {
    std::vector<std::string> lookups;
    for (const std::string& call : simulator.calls(simulation::CallFamily::objcRuntime)) {
        if (call.starts_with("objc_lookUpClass") || call.starts_with("objc_getClass")) {
            lookups.push_back(call);
        }
    }
    return lookups;
}

TEST_F(PrivateAPIResolution, RequiredSelectorsListEachClassesMessagesInCheckingOrder) {
    const auto& required = PrivateAPIResolver::requiredSelectors();
    const auto list = [&](std::string_view name) {
        const auto selectors = required.at(name);
        return std::vector<std::string_view>(selectors.begin(), selectors.end());
    };
    EXPECT_EQ(required.size(), 4U);
    EXPECT_EQ(list("CGVirtualDisplayDescriptor"),
              (std::vector<std::string_view>{
                  "init", "setQueue:", "setName:", "setMaxPixelsWide:", "setMaxPixelsHigh:",
                  "setSizeInMillimeters:", "setSerialNum:", "setVendorID:", "setProductID:"}));
    EXPECT_EQ(list("CGVirtualDisplayMode"),
              (std::vector<std::string_view>{"initWithWidth:height:refreshRate:"}));
    EXPECT_EQ(list("CGVirtualDisplaySettings"),
              (std::vector<std::string_view>{"init", "setModes:", "setHiDPI:", "setRotation:"}));
    EXPECT_EQ(list("CGVirtualDisplay"),
              (std::vector<std::string_view>{"initWithDescriptor:", "applySettings:", "displayID"}));
    EXPECT_EQ(&PrivateAPIResolver::requiredSelectors(), &required) << "built once";
}

TEST_F(PrivateAPIResolution, AClassOutsideTheFourIsNothingWithoutALookupOrALogEntry) {
    const platform::ObjCRuntime runtime{*platform.objcRuntime};
    simulator.clearCalls();
    EXPECT_EQ(PrivateAPIResolver::validatedClass(runtime, "NSObject"), nullptr);
    EXPECT_TRUE(classLookups(simulator).empty());
    EXPECT_TRUE(logged().empty());
}

TEST_F(PrivateAPIResolution, ResolvesTheFourClassesInOrderWithoutLogging) {
    const auto resolved = PrivateAPIResolver::resolve(platform.objcRuntime);
    ASSERT_TRUE(resolved);
    const platform::ObjCRuntime runtime{*platform.objcRuntime};
    EXPECT_EQ(resolved->descriptorType, runtime.lookUpClass("CGVirtualDisplayDescriptor"));
    EXPECT_EQ(resolved->modeType, runtime.lookUpClass("CGVirtualDisplayMode"));
    EXPECT_EQ(resolved->settingsType, runtime.lookUpClass("CGVirtualDisplaySettings"));
    EXPECT_EQ(resolved->displayType, runtime.lookUpClass("CGVirtualDisplay"));
    const auto lookups = classLookups(simulator);
    ASSERT_GE(lookups.size(), 4U);
    EXPECT_EQ(
        std::vector<std::string>(lookups.begin(), lookups.begin() + 4),
        (std::vector<std::string>{
            "objc_lookUpClass(\"CGVirtualDisplayDescriptor\")", "objc_lookUpClass(\"CGVirtualDisplayMode\")",
            "objc_lookUpClass(\"CGVirtualDisplaySettings\")", "objc_lookUpClass(\"CGVirtualDisplay\")"}));
    EXPECT_TRUE(logged().empty());
}

TEST_F(PrivateAPIResolution, ChecksRequiredSelectorsOnInstancesThroughTheClass) {
    ASSERT_TRUE(PrivateAPIResolver::resolve(platform.objcRuntime));
    const auto messages = simulator.calls(simulation::CallFamily::messages);
    EXPECT_NE(std::ranges::find(messages, "+[CGVirtualDisplayDescriptor instancesRespondToSelector: init]"),
              messages.end());
    EXPECT_NE(std::ranges::find(messages, "+[CGVirtualDisplay instancesRespondToSelector: displayID]"),
              messages.end());
}

TEST_F(PrivateAPIResolution, AnAbsentClassIsLoggedAndEndsTheLookups) {
    simulator.removeClass("CGVirtualDisplayMode");
    EXPECT_FALSE(PrivateAPIResolver::resolve(platform.objcRuntime));
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::defaultLevel, "private class CGVirtualDisplayMode is absent")}));
    EXPECT_EQ(classLookups(simulator),
              (std::vector<std::string>{"objc_lookUpClass(\"CGVirtualDisplayDescriptor\")",
                                        "objc_lookUpClass(\"CGVirtualDisplayMode\")"}));
}

TEST_F(PrivateAPIResolution, SettingsWithoutSetRotationBlockTheGateAndTheDisplayClassIsNeverLookedUp) {
    simulator.removeSelector("CGVirtualDisplaySettings", "setRotation:");
    VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
    EXPECT_EQ(logged(), (std::vector{entry(LogLevel::defaultLevel,
                                           "private class CGVirtualDisplaySettings lacks setRotation:")}));
    for (const std::string& lookup : classLookups(simulator)) {
        EXPECT_NE(lookup, "objc_lookUpClass(\"CGVirtualDisplay\")");
    }
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::unavailable(doesNotExpose));
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::apiUnavailable(doesNotExpose));
}

TEST_F(PrivateAPIResolution, OnlyTheFirstMissingSelectorIsReported) {
    simulator.removeSelector("CGVirtualDisplayDescriptor", "setName:");
    simulator.removeSelector("CGVirtualDisplayDescriptor", "setVendorID:");
    EXPECT_FALSE(PrivateAPIResolver::resolve(platform.objcRuntime));
    EXPECT_EQ(logged(), (std::vector{entry(LogLevel::defaultLevel,
                                           "private class CGVirtualDisplayDescriptor lacks setName:")}));
}

TEST_F(PrivateAPIResolution, InitMustBeAnsweredByInstances) {
    simulator.removeSelector("CGVirtualDisplayDescriptor", "init");
    EXPECT_FALSE(PrivateAPIResolver::resolve(platform.objcRuntime));
    EXPECT_EQ(
        logged(),
        (std::vector{entry(LogLevel::defaultLevel, "private class CGVirtualDisplayDescriptor lacks init")}));
}

TEST_F(PrivateAPIResolution, WithoutAnObjectiveCRuntimeThereIsNothingToResolve) {
    EXPECT_FALSE(PrivateAPIResolver::resolve(nullptr));
    EXPECT_TRUE(logged().empty());
}

TEST_F(PrivateAPIResolution, AManagerOnASystemWithoutMacOSIsBlockedWithTheDoesNotExposeSentence) {
    const platform::PlatformAPI bare{};
    VirtualDisplayManager manager{bare, std::make_shared<CoreGraphicsDisplayProbe>(bare), clock};
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::unavailable(doesNotExpose));
    EXPECT_EQ(manager.create(wideSpec(), {}).error(), VirtualDisplayError::apiUnavailable(doesNotExpose));
}

TEST_F(PrivateAPIResolution, MacOS13IsBlockedForItsVersionThoughTheClassesArePresent) {
    simulator.setProcessFacts({.macOSMajorVersion = 13, .realUserID = 501});
    platform = simulator.platform();
    VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
    EXPECT_EQ(manager.availability(),
              VirtualDisplayAvailability::unavailable("Virtual displays need macOS 14 or later."));
    EXPECT_EQ(manager.create(wideSpec(), {}).error(),
              VirtualDisplayError::unsupportedOSVersion("Virtual displays need macOS 14 or later."));
    EXPECT_TRUE(simulator.virtualDisplays().empty());
}

TEST_F(PrivateAPIResolution, MacOS14And26AreAvailableWithoutComment) {
    for (const int version : {14, 26}) {
        simulator.setProcessFacts({.macOSMajorVersion = version, .realUserID = 501});
        platform = simulator.platform();
        VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
        EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::available()) << version;
    }
    EXPECT_TRUE(logged().empty());
}

TEST_F(PrivateAPIResolution, MacOS27ProceedsAfterLoggingThatItIsBeyondTheValidatedReleases) {
    simulator.setProcessFacts({.macOSMajorVersion = 27, .realUserID = 501});
    platform = simulator.platform();
    VirtualDisplayManager manager{platform, std::make_shared<CoreGraphicsDisplayProbe>(platform), clock};
    EXPECT_EQ(manager.availability(), VirtualDisplayAvailability::available());
    EXPECT_EQ(logged(),
              (std::vector{entry(LogLevel::error,
                                 "macOS is newer than the newest release this interface was validated "
                                 "on; proceeding anyway")}));
    const auto handle = manager.create(wideSpec(), {});
    ASSERT_TRUE(handle);
    manager.release(*handle, {});
}

}  // namespace
}  // namespace screenweaver
