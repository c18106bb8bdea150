#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"

#include <cstdlib>
#include <fmt/format.h>
#include <limits>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver::VirtualDisplayGeometry {

std::expected<void, VirtualDisplayError> validate(const VirtualDisplaySpec& spec) {
    const auto invalid = [](std::string reason) {
        return std::unexpected{VirtualDisplayError::invalidSpec(std::move(reason))};
    };
    if (spec.pixelWidth < 1 || spec.pixelHeight < 1) {
        return invalid("a display must have a positive pixel size");
    }
    if (spec.pixelWidth > maximumPixelCount || spec.pixelHeight > maximumPixelCount) {
        return invalid(fmt::format("pixel size exceeds {} in one dimension", maximumPixelCount));
    }
    if (spec.hiDPI && (spec.pixelWidth % 2 != 0 || spec.pixelHeight % 2 != 0)) {
        return invalid("a HiDPI display needs an even pixel size to halve");
    }
    // Written so that a NaN rate or density fails the rule.
    if (!(spec.refreshRate > 0.0 && spec.refreshRate <= maximumRefreshRate)) {
        return invalid(
            fmt::format("refresh rate must be between 0 and {} Hz", text::describe(maximumRefreshRate)));
    }
    if (spec.rotation != 0 && spec.rotation != 90 && spec.rotation != 180 && spec.rotation != 270) {
        return invalid("rotation must be 0, 90, 180 or 270 degrees");
    }
    if (spec.targetPPIOverride &&
        !(*spec.targetPPIOverride > 0.0 && *spec.targetPPIOverride <= maximumTargetPPI)) {
        return invalid(fmt::format("target PPI must be between 0 and {}", text::describe(maximumTargetPPI)));
    }
    return {};
}

std::vector<double> ppiLadder(const VirtualDisplaySpec& spec) {
    const double first = spec.targetPPIOverride.value_or(defaultPPI);
    std::vector<double> ladder{first};
    for (const double fallback : fallbackPPIs) {
        if (fallback < first) {
            ladder.push_back(fallback);
        }
    }
    return ladder;
}

std::vector<VirtualDisplayModeSpec> modes(const VirtualDisplaySpec& spec) {
    std::uint32_t width = pixelCount(spec.pixelWidth);
    std::uint32_t height = pixelCount(spec.pixelHeight);
    if (spec.hiDPI) {
        width >>= 1U;
        height >>= 1U;
    }
    std::vector<VirtualDisplayModeSpec> list{{width, height, spec.refreshRate}};
    // Large displays always offer full HD as well; one of exactly 1920x1080 already is it, and one
    // wider but less than 1080 high does not qualify.
    if ((width > 1920 && height >= 1080) || (width == 1920 && height > 1080)) {
        list.push_back({1920, 1080, 60.0});
    }
    return list;
}

Size sizeInMillimeters(const VirtualDisplaySpec& spec, double ppi) {
    return Size{
        .width = static_cast<double>(spec.pixelWidth) / ppi * millimetersPerInch,
        .height = static_cast<double>(spec.pixelHeight) / ppi * millimetersPerInch,
    };
}

std::uint32_t pixelCount(std::int64_t pixels) {
    if (pixels < 0 || pixels > std::numeric_limits<std::uint32_t>::max()) {
        std::abort();
    }
    return static_cast<std::uint32_t>(pixels);
}

std::int64_t wholePPI(double ppi) {
    return static_cast<std::int64_t>(ppi);
}

}  // namespace screenweaver::VirtualDisplayGeometry
