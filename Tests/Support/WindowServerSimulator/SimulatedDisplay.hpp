#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::simulation {

/// One mode of a simulated display.
struct SimulatedMode {
    std::size_t pixelWidth = 0;
    std::size_t pixelHeight = 0;
    std::size_t pointWidth = 0;
    std::size_t pointHeight = 0;
    double refreshRate = 0;  // Hz
    // A low-resolution (1x) duplicate of a scaled mode: listed by CGDisplayCopyAllDisplayModes only
    // when the options carry kCGDisplayShowDuplicateLowResolutionModes = kCFBooleanTrue.
    bool lowResolutionDuplicate = false;

    bool operator==(const SimulatedMode&) const = default;
};

/// What CGDisplayCopyAllDisplayModes answers for a display.
enum class ModeListAnswer {
    modes,            // a CFArray of the display's modes (the normal answer)
    none,             // NULL
    emptyArray,       // an empty CFArray
    arrayOfNonModes,  // a CFArray of CFStrings, one per mode
    notAnArray,       // a CFString
};

/// One display of the simulated window server.
///
/// Global display coordinates, in points, as the window server has them:
///
///     (0,0) +-----------+------------+ (1920+2560, 0)
///           |   main    |   second   |
///           | 1920x1080 | 2560x1440  |
///           +-----------+            |
///                       +------------+
///
/// y grows downwards; a display's bounds are its origin and its current mode's point size.
struct SimulatedDisplay {
    CGDirectDisplayID displayID = 0;
    std::uint32_t vendorNumber = 0;
    std::uint32_t modelNumber = 0;
    std::uint32_t serialNumber = 0;
    // The ColorSync UUID in 8-4-4-4-12 hexadecimal (any case; CFUUIDCreateString renders it in upper
    // case); absent: CGDisplayCreateUUIDFromDisplayID answers NULL.
    std::optional<std::string> colorSyncUUID;
    bool builtin = false;
    bool main = false;
    bool asleep = false;
    CGPoint origin{0, 0};
    // Every mode, in the order CGDisplayCopyAllDisplayModes lists them.
    std::vector<SimulatedMode> modes;
    // Index into `modes`; absent: CGDisplayCopyDisplayMode answers NULL and the bounds are empty.
    std::optional<std::size_t> currentMode;
    // The display this one mirrors, or kCGNullDirectDisplay (0).
    CGDirectDisplayID mirrorSource = 0;
    // false: CGDisplaySetDisplayMode and committed mode changes fail with kCGErrorCannotComplete.
    bool acceptsModeSwitch = true;
    ModeListAnswer modeListAnswer = ModeListAnswer::modes;
};

/// A display with one mode of `pixelWidth` by `pixelHeight` pixels (and as many points) at
/// `refreshRate`, which is its current mode; every other field at its default.
[[nodiscard]] SimulatedDisplay makeDisplay(CGDirectDisplayID displayID, std::size_t pixelWidth,
                                           std::size_t pixelHeight, double refreshRate = 60.0);

}  // namespace screenweaver::simulation
