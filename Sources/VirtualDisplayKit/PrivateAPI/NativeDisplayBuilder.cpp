#include "VirtualDisplayKit/PrivateAPI/NativeDisplayBuilder.hpp"

#include <fmt/format.h>
#include <vector>

#include "Platform/AutoreleasePool.hpp"
#include "Platform/CFRef.hpp"
#include "Platform/CFStrings.hpp"
#include "Platform/TollFreeBridging.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"

namespace screenweaver {
namespace {

// CIE 1931 xy chromaticities of the colour space every display is given: wide-gamut primaries
// with a D65 white.
constexpr CGPoint redPrimary{0.6797, 0.3203};
constexpr CGPoint greenPrimary{0.2559, 0.6983};
constexpr CGPoint bluePrimary{0.1494, 0.0557};
constexpr CGPoint whitePoint{0.3125, 0.3291};

// The transfer function the modes of a high or reference range display are made with.
constexpr unsigned int extendedRangeTransferFunction = 1;

}  // namespace

NativeDisplayBuilder::NativeDisplayBuilder(const platform::ObjCRuntimeAPI& runtime,
                                           const platform::CoreFoundationAPI& coreFoundation,
                                           ResolvedPrivateAPI api, dispatch_queue_t queue)
    : runtime_(runtime), coreFoundation_(&coreFoundation), api_(api), queue_(queue), selectors_(runtime_) {}

std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> NativeDisplayBuilder::makeDisplay(
    const VirtualDisplayRecipe& recipe) const {
    const platform::AutoreleasePool pool{runtime_.api()};
    auto display = build(recipe);
    if (!display) {
        return std::unexpected{std::move(display.error())};
    }
    return std::move(*display);
}

std::expected<std::unique_ptr<NativeVirtualDisplay>, VirtualDisplayError> NativeDisplayBuilder::build(
    const VirtualDisplayRecipe& recipe) const {
    // The descriptor and the settings stay alive until the build is over: the display may still
    // read them while it applies its settings. They are released when this function returns,
    // after the display (on a refusal) or after its ID was read (on success).
    const platform::ObjCRef descriptor = makeDescriptor(recipe);
    platform::ObjCRef display =
        runtime_.make(api_.displayType, selectors_.initWithDescriptor, descriptor.get());
    if (!display) {
        return std::unexpected{VirtualDisplayError::creationFailed(
            fmt::format("the display interface refused a descriptor of {}x{} at {} PPI", recipe.maxPixelsWide,
                        recipe.maxPixelsHigh, VirtualDisplayGeometry::wholePPI(recipe.ppi)))};
    }
    const platform::ObjCRef settings = makeSettings(recipe);
    if (!static_cast<bool>(runtime_.send<BOOL>(display.get(), selectors_.applySettings, settings.get()))) {
        // Releasing the object takes the half-made display off the system.
        display.reset();
        return std::unexpected{VirtualDisplayError::configurationRejected()};
    }
    return std::make_unique<NativeVirtualDisplay>(runtime_, std::move(display), selectors_.displayID);
}

platform::ObjCRef NativeDisplayBuilder::makeDescriptor(const VirtualDisplayRecipe& recipe) const {
    platform::ObjCRef descriptor = runtime_.make(api_.descriptorType, selectors_.init);
    const id object = descriptor.get();
    runtime_.send<void>(object, selectors_.setQueue, queue_);
    {
        const auto name = platform::makeCFString(*coreFoundation_, recipe.name);
        runtime_.send<void>(object, selectors_.setName, platform::bridgeToObjC(name.get()));
    }
    runtime_.send<void>(object, selectors_.setMaxPixelsWide, static_cast<unsigned int>(recipe.maxPixelsWide));
    runtime_.send<void>(object, selectors_.setMaxPixelsHigh, static_cast<unsigned int>(recipe.maxPixelsHigh));
    runtime_.send<void>(object, selectors_.setSizeInMillimeters,
                        CGSize{recipe.sizeInMillimeters.width, recipe.sizeInMillimeters.height});
    runtime_.send<void>(object, selectors_.setSerialNum, static_cast<unsigned int>(recipe.serialNumber));
    runtime_.send<void>(object, selectors_.setVendorID, static_cast<unsigned int>(recipe.vendorID));
    runtime_.send<void>(object, selectors_.setProductID, static_cast<unsigned int>(recipe.productID));
    if (object != nullptr) {
        applyOptionalProperties(object, recipe.serialNumber);
    }
    return descriptor;
}

void NativeDisplayBuilder::applyOptionalProperties(id descriptor, std::uint32_t serialNumber) const {
    if (runtime_.respondsToSelector(descriptor, selectors_.setSerialNumber)) {
        runtime_.send<void>(descriptor, selectors_.setSerialNumber, static_cast<unsigned int>(serialNumber));
    }
    for (const auto& [selector, point] : {std::pair{selectors_.setRedPrimary, redPrimary},
                                          std::pair{selectors_.setGreenPrimary, greenPrimary},
                                          std::pair{selectors_.setBluePrimary, bluePrimary},
                                          std::pair{selectors_.setWhitePoint, whitePoint}}) {
        if (runtime_.respondsToSelector(descriptor, selector)) {
            runtime_.send<void>(descriptor, selector, point);
        }
    }
}

platform::ObjCRef NativeDisplayBuilder::makeSettings(const VirtualDisplayRecipe& recipe) const {
    platform::ObjCRef settings = runtime_.make(api_.settingsType, selectors_.init);
    const bool withTransferFunction =
        recipe.dynamicRange != DynamicRange::standard &&
        runtime_.instancesRespondToSelector(api_.modeType,
                                            selectors_.initWithWidthHeightRefreshRateTransferFunction);
    {
        // The array retains the modes; ours go with the array once the settings hold it.
        std::vector<platform::ObjCRef> modes;
        std::vector<const void*> values;
        for (const VirtualDisplayModeSpec& mode : recipe.modes) {
            modes.push_back(makeMode(mode, withTransferFunction));
            values.push_back(platform::bridgeToCF(modes.back().get()));
        }
        const auto list = platform::CFRef<CFArrayRef>::adopt(
            *coreFoundation_,
            coreFoundation_->CFArrayCreate(coreFoundation_->kCFAllocatorDefault, values.data(),
                                           static_cast<CFIndex>(values.size()),
                                           coreFoundation_->kCFTypeArrayCallBacks));
        runtime_.send<void>(settings.get(), selectors_.setModes, platform::bridgeToObjC(list.get()));
    }
    runtime_.send<void>(settings.get(), selectors_.setHiDPI,
                        static_cast<unsigned int>(recipe.hiDPI ? 1U : 0U));
    runtime_.send<void>(settings.get(), selectors_.setRotation, static_cast<unsigned int>(recipe.rotation));
    if (recipe.dynamicRange == DynamicRange::reference &&
        runtime_.instancesRespondToSelector(api_.settingsType, selectors_.setIsReference)) {
        runtime_.send<void>(settings.get(), selectors_.setIsReference, static_cast<BOOL>(true));
    }
    return settings;
}

platform::ObjCRef NativeDisplayBuilder::makeMode(const VirtualDisplayModeSpec& mode,
                                                 bool withTransferFunction) const {
    const auto width = static_cast<unsigned int>(mode.width);
    const auto height = static_cast<unsigned int>(mode.height);
    if (withTransferFunction) {
        return runtime_.make(api_.modeType, selectors_.initWithWidthHeightRefreshRateTransferFunction, width,
                             height, mode.refreshRate, extendedRangeTransferFunction);
    }
    return runtime_.make(api_.modeType, selectors_.initWithWidthHeightRefreshRate, width, height,
                         mode.refreshRate);
}

}  // namespace screenweaver
