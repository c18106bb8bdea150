// Reads a virtual display's specification from JSON, checks its geometry, prints its density ladder
// and modes, and validates two arrangements of displays: one library of the package each.
#include <cstdint>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "CoreTypes/Coding/JSONCoding.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"
#include "CoreTypes/TextRendering.hpp"
#include "DisplayKit/LayoutValidator.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"

namespace {

using namespace screenweaver;

constexpr std::string_view specificationJSON =
    R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Studio wide","pixelWidth":5120,)"
    R"("pixelHeight":1440,"refreshRate":60,"hiDPI":true,"rotation":0,"dynamicRange":"standard",)"
    R"("targetPPIOverride":110})";

std::string joined(const std::vector<double>& values) {
    std::string text;
    for (const double value : values) {
        text += (text.empty() ? "" : ", ") + text::describe(value);
    }
    return text;
}

void printLayoutVerdict(std::string_view name, const FrameMap& frames) {
    const auto verdict = LayoutValidator::validate(frames);
    std::cout << "layout " << name << ": " << (verdict ? "valid" : verdict.error().description()) << '\n';
}

}  // namespace

int main() {
    const auto spec = decode<VirtualDisplaySpec>(specificationJSON);
    if (!spec) {
        std::cout << "decoding failed: " << spec.error().description() << '\n';
        return 1;
    }
    std::cout << "decoded: " << spec->name << ", " << spec->pixelWidth << "x" << spec->pixelHeight << " at "
              << text::describe(spec->refreshRate) << " Hz, id " << spec->id.uuidString() << '\n';

    const auto geometry = VirtualDisplayGeometry::validate(*spec);
    std::cout << "geometry: " << (geometry ? "valid" : geometry.error().description()) << '\n';
    std::cout << "density ladder: " << joined(VirtualDisplayGeometry::ppiLadder(*spec)) << " PPI\n";
    for (const VirtualDisplayModeSpec& mode : VirtualDisplayGeometry::modes(*spec)) {
        std::cout << "mode: " << mode.width << "x" << mode.height << " at "
                  << text::describe(mode.refreshRate) << " Hz\n";
    }

    // The virtual display to the right of a 2560x1440 main display, sharing its top edge...
    printLayoutVerdict("side by side", {{1, Rect{{0, 0}, {2560, 1440}}}, {2, Rect{{2560, 0}, {2560, 720}}}});
    // ...and below it to the right, touching it only at a corner.
    printLayoutVerdict("corner only",
                       {{1, Rect{{0, 0}, {2560, 1440}}}, {2, Rect{{2560, 1440}, {2560, 720}}}});
    return 0;
}
