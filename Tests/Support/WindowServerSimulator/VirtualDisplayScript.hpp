#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::simulation {

/// How the simulated private virtual-display classes behave. The default is the well-behaved
/// window server: every descriptor is accepted, settings are applied, and the display appears at
/// once, unmirrored, at its first mode, and accepts mode switches.
struct VirtualDisplayScript {
    // -initWithDescriptor: refuses (releases its receiver and answers nil) when any of these holds:
    // always;
    bool refuseEveryDescriptor = false;
    // when the descriptor's density, maxPixelsWide per inch of sizeInMillimeters.width, exceeds this;
    std::optional<double> refuseDescriptorsAboveDensity{};
    // on attempt i (counted from 0 over the simulator's life) when refuseAttempts[i] is true.
    std::vector<bool> refuseAttempts{};
    // -applySettings: answers NO (the display does not appear).
    bool rejectSettings = false;
    // How long after -applySettings: the display joins the active list, on the simulator's clock.
    std::chrono::nanoseconds appearanceDelay{0};
    // The display comes up mirroring the main display.
    bool appearsMirrored = false;
    // The display comes up at this pixel size instead of its first mode's (a mode of that size is
    // added to its list when it has none).
    std::optional<std::pair<std::size_t, std::size_t>> appearsAtPixelSize{};
    // CGDisplaySetDisplayMode and committed mode changes succeed on the display.
    bool acceptsModeSwitch = true;
    // -displayID answers 0 (the display still appears under the ID the simulator gave it).
    bool answersZeroDisplayID = false;
};

/// The values a `CGVirtualDisplayDescriptor` received.
struct DescriptorValues {
    std::optional<std::string> queue;  // the queue's description, e.g. "QOS_CLASS_USER_INITIATED"
    std::optional<std::string> name;
    std::uint32_t maxPixelsWide = 0;
    std::uint32_t maxPixelsHigh = 0;
    CGSize sizeInMillimeters{0, 0};
    std::uint32_t serialNum = 0;
    std::uint32_t vendorID = 0;
    std::uint32_t productID = 0;
    std::optional<std::uint32_t> serialNumber;
    std::optional<CGPoint> redPrimary;
    std::optional<CGPoint> greenPrimary;
    std::optional<CGPoint> bluePrimary;
    std::optional<CGPoint> whitePoint;
};

/// The values a `CGVirtualDisplayMode` was initialised with.
struct ModeValues {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    double refreshRate = 0;
    std::optional<std::uint32_t> transferFunction;  // only through the transfer-function initialiser

    bool operator==(const ModeValues&) const = default;
};

/// The values a `CGVirtualDisplaySettings` received.
struct SettingsValues {
    std::vector<ModeValues> modes;
    std::uint32_t hiDPI = 0;
    std::uint32_t rotation = 0;
    std::optional<bool> isReference;
};

/// One `CGVirtualDisplay` that accepted its descriptor.
struct VirtualDisplayRecord {
    CGDirectDisplayID displayID = 0;         // the ID the simulator gave it (even when -displayID answers 0)
    DescriptorValues descriptor;             // as it was when -initWithDescriptor: read it
    std::optional<SettingsValues> settings;  // the last settings it accepted
    bool alive = true;                       // false once its last reference was released
};

}  // namespace screenweaver::simulation
