#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "Platform/AutoreleasePool.hpp"
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

class ObjCMessages : public SimulatorFixture {
protected:
    ObjCRef makeDescriptor() { return runtime.make(runtime.lookUpClass("CGVirtualDisplayDescriptor"), init); }
    ObjCRef makeSettings() { return runtime.make(runtime.lookUpClass("CGVirtualDisplaySettings"), init); }

    platform::ObjCRuntime runtime{objc};
    SEL init = runtime.selector("init");
};

TEST_F(ObjCMessages, PassesA32BitUnsignedIntegerExactly) {
    const ObjCRef descriptor = makeDescriptor();
    simulator.clearCalls();
    runtime.send<void>(descriptor.get(), runtime.selector("setMaxPixelsWide:"), uint32_t{5120});
    runtime.send<void>(descriptor.get(), runtime.selector("setSerialNum:"),
                       std::numeric_limits<uint32_t>::max());
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                ElementsAre("-[CGVirtualDisplayDescriptor setMaxPixelsWide: 5120]",
                            "-[CGVirtualDisplayDescriptor setSerialNum: 4294967295]"));
}

TEST_F(ObjCMessages, PassesACGSizeByValue) {
    const ObjCRef descriptor = makeDescriptor();
    simulator.clearCalls();
    runtime.send<void>(descriptor.get(), runtime.selector("setSizeInMillimeters:"),
                       CGSize{866.9866666666666, 243.84});
    EXPECT_THAT(
        simulator.calls(CallFamily::messages),
        ElementsAre("-[CGVirtualDisplayDescriptor setSizeInMillimeters: (866.9866666666666, 243.84)]"));
}

TEST_F(ObjCMessages, PassesACGPointByValue) {
    const ObjCRef descriptor = makeDescriptor();
    simulator.clearCalls();
    runtime.send<void>(descriptor.get(), runtime.selector("setRedPrimary:"), CGPoint{0.6797, 0.3203});
    runtime.send<void>(descriptor.get(), runtime.selector("setWhitePoint:"), CGPoint{0.3125, 0.3291});
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                ElementsAre("-[CGVirtualDisplayDescriptor setRedPrimary: (0.6797, 0.3203)]",
                            "-[CGVirtualDisplayDescriptor setWhitePoint: (0.3125, 0.3291)]"));
}

TEST_F(ObjCMessages, PassesABoolean) {
    const ObjCRef settings = makeSettings();
    simulator.clearCalls();
    runtime.send<void>(settings.get(), runtime.selector("setIsReference:"), static_cast<BOOL>(true));
    runtime.send<void>(settings.get(), runtime.selector("setIsReference:"), static_cast<BOOL>(false));
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                ElementsAre("-[CGVirtualDisplaySettings setIsReference: YES]",
                            "-[CGVirtualDisplaySettings setIsReference: NO]"));
}

TEST_F(ObjCMessages, PassesACoreFoundationStringAsAnObject) {
    const ObjCRef descriptor = makeDescriptor();
    const auto name = platform::makeCFString(cf, "Screenweaver 5120x1440");
    simulator.clearCalls();
    runtime.send<void>(descriptor.get(), runtime.selector("setName:"), platform::bridgeToObjC(name.get()));
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                ElementsAre("-[CGVirtualDisplayDescriptor setName: \"Screenweaver 5120x1440\"]"));
}

TEST_F(ObjCMessages, PassesACoreFoundationArrayOfObjects) {
    const Class modeClass = runtime.lookUpClass("CGVirtualDisplayMode");
    const SEL initMode = runtime.selector("initWithWidth:height:refreshRate:");
    const ObjCRef wide = runtime.make(modeClass, initMode, uint32_t{2560}, uint32_t{720}, 60.0);
    const ObjCRef narrow = runtime.make(modeClass, initMode, uint32_t{1920}, uint32_t{1080}, 59.94);
    const void* values[] = {platform::bridgeToCF(wide.get()), platform::bridgeToCF(narrow.get())};
    const auto modes = CFRef<CFArrayRef>::adopt(
        cf, cf.CFArrayCreate(cf.kCFAllocatorDefault, values, 2, cf.kCFTypeArrayCallBacks));
    const ObjCRef settings = makeSettings();
    simulator.clearCalls();
    runtime.send<void>(settings.get(), runtime.selector("setModes:"), platform::bridgeToObjC(modes.get()));
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                ElementsAre("-[CGVirtualDisplaySettings setModes: [<CGVirtualDisplayMode 2560x720@60.0>, "
                            "<CGVirtualDisplayMode 1920x1080@59.94>]]"));
}

TEST_F(ObjCMessages, ReachesTheImplementationThroughTheRuntime) {
    const ObjCRef descriptor = makeDescriptor();
    simulator.clearCalls();
    runtime.send<void>(descriptor.get(), runtime.selector("setVendorID:"), uint32_t{0x5357});
    EXPECT_THAT(simulator.calls(CallFamily::objcRuntime),
                ElementsAre("object_getClass(<CGVirtualDisplayDescriptor>)",
                            "class_getMethodImplementation(CGVirtualDisplayDescriptor, setVendorID:)"));
}

TEST_F(ObjCMessages, AnswersZeroForAMessageToNilWithoutSendingIt) {
    simulator.clearCalls();
    EXPECT_EQ(runtime.send<unsigned int>(static_cast<id>(nullptr), runtime.selector("displayID")), 0u);
    EXPECT_THAT(simulator.calls(CallFamily::messages), IsEmpty());
}

TEST_F(ObjCMessages, AsksInstancesAndClassesWhatTheyAnswer) {
    const Class modeClass = runtime.lookUpClass("CGVirtualDisplayMode");
    const SEL withTransfer = runtime.selector("initWithWidth:height:refreshRate:transferFunction:");
    EXPECT_TRUE(runtime.instancesRespondToSelector(modeClass, withTransfer));
    simulator.removeSelector("CGVirtualDisplayMode", "initWithWidth:height:refreshRate:transferFunction:");
    EXPECT_FALSE(runtime.instancesRespondToSelector(modeClass, withTransfer));
    EXPECT_THAT(simulator.calls(CallFamily::messages),
                Contains("+[CGVirtualDisplayMode instancesRespondToSelector: "
                         "initWithWidth:height:refreshRate:transferFunction:]"));

    const ObjCRef descriptor = makeDescriptor();
    const SEL serialNumber = runtime.selector("setSerialNumber:");
    EXPECT_TRUE(runtime.respondsToSelector(descriptor.get(), serialNumber));
    simulator.removeSelector("CGVirtualDisplayDescriptor", "setSerialNumber:");
    EXPECT_FALSE(runtime.respondsToSelector(descriptor.get(), serialNumber));
    EXPECT_FALSE(
        objc.class_respondsToSelector(runtime.lookUpClass("CGVirtualDisplayDescriptor"), serialNumber));
}

TEST_F(ObjCMessages, FindsNoClassThatIsMissing) {
    EXPECT_NE(runtime.lookUpClass("CGVirtualDisplay"), nullptr);
    simulator.removeClass("CGVirtualDisplay");
    EXPECT_EQ(runtime.lookUpClass("CGVirtualDisplay"), nullptr);
    EXPECT_EQ(objc.objc_getClass("CGVirtualDisplay"), nullptr);
    EXPECT_STREQ(objc.class_getName(runtime.lookUpClass("CGVirtualDisplayMode")), "CGVirtualDisplayMode");
    EXPECT_STREQ(objc.sel_getName(runtime.selector("applySettings:")), "applySettings:");
}

TEST_F(ObjCMessages, BalancesRetainAndReleaseOfOwners) {
    ObjCRef descriptor = makeDescriptor();
    {
        const ObjCRef second = runtime.retain(descriptor.get());
        EXPECT_THAT(simulator.hygieneProblems(),
                    ElementsAre("leaked <CGVirtualDisplayDescriptor> (retain count 2)"));
    }
    EXPECT_THAT(simulator.hygieneProblems(),
                ElementsAre("leaked <CGVirtualDisplayDescriptor> (retain count 1)"));
    ObjCRef moved = std::move(descriptor);
    EXPECT_FALSE(descriptor);
    moved.reset();
    EXPECT_THAT(simulator.hygieneProblems(), IsEmpty());
}

TEST_F(ObjCMessages, OwnsNothingWhenAnInitializerRefuses) {
    simulator.setVirtualDisplayScript(VirtualDisplayScript{.refuseEveryDescriptor = true});
    const ObjCRef descriptor = makeDescriptor();
    const ObjCRef display = runtime.make(runtime.lookUpClass("CGVirtualDisplay"),
                                         runtime.selector("initWithDescriptor:"), descriptor.get());
    EXPECT_FALSE(display);
    EXPECT_THAT(simulator.hygieneProblems(),
                ElementsAre("leaked <CGVirtualDisplayDescriptor> (retain count 1)"));
}

TEST_F(ObjCMessages, PushesAndPopsAnAutoreleasePoolAroundItsScope) {
    {
        const platform::AutoreleasePool outer{objc};
        const platform::AutoreleasePool inner{objc};
    }
    EXPECT_THAT(simulator.calls(CallFamily::objcRuntime),
                ElementsAre("objc_autoreleasePoolPush()", "objc_autoreleasePoolPush()",
                            "objc_autoreleasePoolPop(pool=2)", "objc_autoreleasePoolPop(pool=1)"));
}

TEST_F(ObjCMessages, AdoptsAndRetainsCoreFoundationValues) {
    auto string =
        CFRef<CFStringRef>::adopt(cf, cf.CFStringCreateWithCString(nullptr, "kept", kCFStringEncodingUTF8));
    {
        const auto second = CFRef<CFStringRef>::retain(cf, string.get());
        EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("leaked \"kept\" (retain count 2)"));
    }
    const CFStringRef handedOut = string.transferOwnership();
    EXPECT_FALSE(string);
    EXPECT_THAT(simulator.hygieneProblems(), ElementsAre("leaked \"kept\" (retain count 1)"));
    cf.CFRelease(handedOut);
}

}  // namespace
}  // namespace screenweaver::simulation
