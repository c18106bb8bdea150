#include <fmt/format.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "CoreTypes/Model/VirtualDisplaySerial.hpp"
#include "SimulatedMachine.hpp"
#include "VirtualDisplayKit/PrivateAPI/NativeDisplayBuilder.hpp"
#include "VirtualDisplayKit/PrivateAPI/PrivateAPIResolver.hpp"

namespace screenweaver {
namespace {

using Messages = std::vector<std::string>;

class NativeDisplayBuilding : public testing::SimulatedMachine {
protected:
    [[nodiscard]] NativeDisplayBuilder builder() const {
        return NativeDisplayBuilder{
            *platform.objcRuntime, *platform.coreFoundation,
            *PrivateAPIResolver::resolve(platform.objcRuntime),
            platform.dispatch->dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)};
    }

    static VirtualDisplayRecipe recipe(DynamicRange range) {
        auto spec = wideSpec();
        spec.name = "Desk";
        spec.dynamicRange = range;
        return VirtualDisplayRecipe::make(spec, 150.0);
    }

    void removeOptionalSelectors() {
        for (const char* selector : {"setSerialNumber:", "setRedPrimary:", "setGreenPrimary:",
                                     "setBluePrimary:", "setWhitePoint:"}) {
            simulator.removeSelector("CGVirtualDisplayDescriptor", selector);
        }
        simulator.removeSelector("CGVirtualDisplayMode",
                                 "initWithWidth:height:refreshRate:transferFunction:");
        simulator.removeSelector("CGVirtualDisplaySettings", "setIsReference:");
    }

    /// Builds the display, drops it, and returns the messages of the whole road.
    Messages buildAndDrop(const NativeDisplayBuilder& maker, const VirtualDisplayRecipe& made) {
        simulator.clearCalls();
        auto display = maker.makeDisplay(made);
        EXPECT_TRUE(display);
        display->reset();
        return simulator.calls(simulation::CallFamily::messages);
    }
};

struct Expectation {
    DynamicRange range = DynamicRange::standard;
    bool optionalSelectors = true;
};

Messages expectedMessages(const Expectation& expected) {
    const std::uint32_t serial = VirtualDisplaySerial::serialNumber(testing::SimulatedMachine::wideSpec().id);
    const std::string descriptor = "-[CGVirtualDisplayDescriptor ";
    Messages messages{
        "+[CGVirtualDisplayDescriptor alloc]",
        descriptor + "init]",
        descriptor + "setQueue: <global queue QOS_CLASS_USER_INITIATED>]",
        descriptor + "setName: \"Desk\"]",
        descriptor + "setMaxPixelsWide: 5120]",
        descriptor + "setMaxPixelsHigh: 1440]",
        descriptor + "setSizeInMillimeters: (866.9866666666666, 243.83999999999997)]",
        descriptor + fmt::format("setSerialNum: {}]", serial),
        descriptor + "setVendorID: 21335]",
        descriptor + "setProductID: 1]",
    };
    const std::pair<std::string, std::string> optional[] = {
        {"setSerialNumber:", std::to_string(serial)}, {"setRedPrimary:", "(0.6797, 0.3203)"},
        {"setGreenPrimary:", "(0.2559, 0.6983)"},     {"setBluePrimary:", "(0.1494, 0.0557)"},
        {"setWhitePoint:", "(0.3125, 0.3291)"},
    };
    for (const auto& [selector, value] : optional) {
        messages.push_back(descriptor + "respondsToSelector: " + selector + "]");
        if (expected.optionalSelectors) {
            messages.push_back(descriptor + selector + " " + value + "]");
        }
    }
    messages.insert(messages.end(),
                    {
                        "+[CGVirtualDisplay alloc]",
                        "-[CGVirtualDisplay initWithDescriptor: <CGVirtualDisplayDescriptor>]",
                        "+[CGVirtualDisplaySettings alloc]",
                        "-[CGVirtualDisplaySettings init]",
                    });
    std::string transfer;
    if (expected.range != DynamicRange::standard) {
        messages.push_back(
            "+[CGVirtualDisplayMode instancesRespondToSelector: "
            "initWithWidth:height:refreshRate:transferFunction:]");
        if (expected.optionalSelectors) {
            transfer = " transferFunction: 1";
        }
    }
    messages.insert(
        messages.end(),
        {
            "+[CGVirtualDisplayMode alloc]",
            "-[CGVirtualDisplayMode initWithWidth: 5120 height: 1440 refreshRate: 60.0" + transfer + "]",
            "+[CGVirtualDisplayMode alloc]",
            "-[CGVirtualDisplayMode initWithWidth: 1920 height: 1080 refreshRate: 60.0" + transfer + "]",
            "-[CGVirtualDisplaySettings setModes: [<CGVirtualDisplayMode 5120x1440@60.0>, "
            "<CGVirtualDisplayMode 1920x1080@60.0>]]",
            "-[CGVirtualDisplayMode release]",
            "-[CGVirtualDisplayMode release]",
            "-[CGVirtualDisplaySettings setHiDPI: 0]",
            "-[CGVirtualDisplaySettings setRotation: 0]",
        });
    if (expected.range == DynamicRange::reference) {
        messages.push_back("+[CGVirtualDisplaySettings instancesRespondToSelector: setIsReference:]");
        if (expected.optionalSelectors) {
            messages.push_back("-[CGVirtualDisplaySettings setIsReference: YES]");
        }
    }
    messages.insert(messages.end(), {
                                        "-[CGVirtualDisplay applySettings: <CGVirtualDisplaySettings>]",
                                        "-[CGVirtualDisplay displayID]",
                                        "-[CGVirtualDisplaySettings release]",
                                        descriptor + "release]",
                                        "-[CGVirtualDisplay release]",
                                    });
    return messages;
}

TEST_F(NativeDisplayBuilding, AStandardRecipeSendsThePrescribedMessagesInOrder) {
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::standard)), expectedMessages({}));
}

TEST_F(NativeDisplayBuilding, AHighRangeRecipeMakesItsModesWithTheTransferFunction) {
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::high)),
              expectedMessages({.range = DynamicRange::high}));
}

TEST_F(NativeDisplayBuilding, AReferenceRangeRecipeAlsoMarksTheSettingsAsReference) {
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::reference)),
              expectedMessages({.range = DynamicRange::reference}));
}

TEST_F(NativeDisplayBuilding, WithoutTheOptionalSelectorsAStandardRecipeSkipsThemSilently) {
    removeOptionalSelectors();
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::standard)),
              expectedMessages({.optionalSelectors = false}));
}

TEST_F(NativeDisplayBuilding, AHighRangeRecipeWithoutTheTransferInitialiserGetsPlainModesAndSucceeds) {
    removeOptionalSelectors();
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::high)),
              expectedMessages({.range = DynamicRange::high, .optionalSelectors = false}));
    EXPECT_FALSE(simulator.virtualDisplays().at(0).settings->modes.at(0).transferFunction);
}

TEST_F(NativeDisplayBuilding, AReferenceRangeRecipeWithoutSetIsReferenceDoesNotSendIt) {
    removeOptionalSelectors();
    EXPECT_EQ(buildAndDrop(builder(), recipe(DynamicRange::reference)),
              expectedMessages({.range = DynamicRange::reference, .optionalSelectors = false}));
}

TEST_F(NativeDisplayBuilding, TheDisplayCarriesTheRecipesValuesAndLivesAsLongAsItsOwner) {
    auto spec = wideSpec();
    spec.hiDPI = true;
    spec.rotation = 90;
    spec.pixelHeight = 2880;
    const auto made = VirtualDisplayRecipe::make(spec, 120.0);
    auto display = builder().makeDisplay(made);
    ASSERT_TRUE(display);
    const auto record = simulator.virtualDisplays().at(0);
    EXPECT_EQ((*display)->displayID(), record.displayID);
    EXPECT_TRUE(record.alive);
    EXPECT_EQ(record.descriptor.name, "Service self-test");
    EXPECT_EQ(record.descriptor.vendorID, 0x5357U);
    EXPECT_EQ(record.descriptor.serialNum, made.serialNumber);
    EXPECT_EQ(record.settings->hiDPI, 1U);
    EXPECT_EQ(record.settings->rotation, 90U);
    EXPECT_EQ(record.settings->modes,
              (std::vector<simulation::ModeValues>{{2560, 1440, 60.0, std::nullopt},
                                                   {1920, 1080, 60.0, std::nullopt}}));
    display->reset();
    EXPECT_FALSE(simulator.virtualDisplays().at(0).alive);
}

TEST_F(NativeDisplayBuilding, ARefusedDescriptorIsReportedWithTheTruncatedDensity) {
    simulator.setVirtualDisplayScript({.refuseEveryDescriptor = true});
    auto spec = wideSpec();
    const auto display = builder().makeDisplay(VirtualDisplayRecipe::make(spec, 99.9));
    ASSERT_FALSE(display);
    EXPECT_EQ(display.error(), VirtualDisplayError::creationFailed(
                                   "the display interface refused a descriptor of 5120x1440 at 99 PPI"));
    EXPECT_TRUE(simulator.virtualDisplays().empty());
}

TEST_F(NativeDisplayBuilding, RejectedSettingsReleaseTheDisplayBeforeReportingARejectedConfiguration) {
    simulator.setVirtualDisplayScript({.rejectSettings = true});
    const NativeDisplayBuilder maker = builder();
    simulator.clearCalls();
    const auto display = maker.makeDisplay(recipe(DynamicRange::standard));
    ASSERT_FALSE(display);
    EXPECT_EQ(display.error(), VirtualDisplayError::configurationRejected());
    EXPECT_FALSE(simulator.virtualDisplays().at(0).alive);
    const auto messages = simulator.calls(simulation::CallFamily::messages);
    const Messages tail(messages.end() - 4, messages.end());
    EXPECT_EQ(tail, (Messages{"-[CGVirtualDisplay applySettings: <CGVirtualDisplaySettings>]",
                              "-[CGVirtualDisplay release]", "-[CGVirtualDisplaySettings release]",
                              "-[CGVirtualDisplayDescriptor release]"}));
}

TEST_F(NativeDisplayBuilding, ARefusedDescriptorIsReleasedAfterTheRefusal) {
    simulator.setVirtualDisplayScript({.refuseEveryDescriptor = true});
    const NativeDisplayBuilder maker = builder();
    simulator.clearCalls();
    ASSERT_FALSE(maker.makeDisplay(recipe(DynamicRange::standard)));
    const auto messages = simulator.calls(simulation::CallFamily::messages);
    const Messages tail(messages.end() - 2, messages.end());
    EXPECT_EQ(tail, (Messages{"-[CGVirtualDisplay initWithDescriptor: <CGVirtualDisplayDescriptor>]",
                              "-[CGVirtualDisplayDescriptor release]"}));
}

TEST_F(NativeDisplayBuilding, EachBuildRunsInsideAnAutoreleasePoolOfItsOwn) {
    const NativeDisplayBuilder maker = builder();
    simulator.clearCalls();
    auto display = maker.makeDisplay(recipe(DynamicRange::standard));
    ASSERT_TRUE(display);
    const auto calls = simulator.calls();
    EXPECT_EQ(calls.front(), "objc_autoreleasePoolPush()");
    EXPECT_TRUE(calls.back().starts_with("objc_autoreleasePoolPop(")) << calls.back();
}

}  // namespace
}  // namespace screenweaver
