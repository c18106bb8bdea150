#pragma once

#include <array>
#include <string_view>

#include "Platform/ObjCRuntime.hpp"

// The slice of the window server's four private virtual-display classes that the system uses. The
// classes are never linked against: they are looked up by name at run time, checked for the
// selectors below (the resolver), and only then sent these messages (the native builder).
//
// Parameter types, which a message's sender must match exactly: `setQueue:` a dispatch queue;
// `setName:` and `setModes:` an object (a CoreFoundation string or array, toll-free bridged);
// `setMaxPixelsWide:`, `setMaxPixelsHigh:`, `setSerialNum:`, `setSerialNumber:`, `setVendorID:`,
// `setProductID:`, `setHiDPI:` and `setRotation:` unsigned int; `setSizeInMillimeters:` CGSize;
// the primaries and the white point CGPoint; `setIsReference:` BOOL; the mode initialisers unsigned
// int, unsigned int, double (and unsigned int for the transfer function); `initWithDescriptor:` and
// `applySettings:` an object, the latter answering BOOL; `displayID` answers unsigned int.
namespace screenweaver::CGVirtualDisplayInterface {

inline constexpr std::string_view descriptorClassName = "CGVirtualDisplayDescriptor";
inline constexpr std::string_view modeClassName = "CGVirtualDisplayMode";
inline constexpr std::string_view settingsClassName = "CGVirtualDisplaySettings";
inline constexpr std::string_view displayClassName = "CGVirtualDisplay";

/// What instances of each class must answer, in the order the resolver checks them.
inline constexpr std::array<std::string_view, 9> descriptorSelectors{
    "init",
    "setQueue:",
    "setName:",
    "setMaxPixelsWide:",
    "setMaxPixelsHigh:",
    "setSizeInMillimeters:",
    "setSerialNum:",
    "setVendorID:",
    "setProductID:",
};
inline constexpr std::array<std::string_view, 1> modeSelectors{"initWithWidth:height:refreshRate:"};
inline constexpr std::array<std::string_view, 4> settingsSelectors{"init",
                                                                   "setModes:", "setHiDPI:", "setRotation:"};
inline constexpr std::array<std::string_view, 3> displaySelectors{
    "initWithDescriptor:", "applySettings:", "displayID"};

/// Every selector the builder sends, registered once. The optional ones are sent only where the
/// receiver answers them.
struct Selectors {
    explicit Selectors(const platform::ObjCRuntime& runtime);

    SEL init;
    SEL setQueue;
    SEL setName;
    SEL setMaxPixelsWide;
    SEL setMaxPixelsHigh;
    SEL setSizeInMillimeters;
    SEL setSerialNum;
    SEL setVendorID;
    SEL setProductID;
    SEL initWithWidthHeightRefreshRate;
    SEL setModes;
    SEL setHiDPI;
    SEL setRotation;
    SEL initWithDescriptor;
    SEL applySettings;
    SEL displayID;
    // Optional.
    SEL setSerialNumber;
    SEL setRedPrimary;
    SEL setGreenPrimary;
    SEL setBluePrimary;
    SEL setWhitePoint;
    SEL initWithWidthHeightRefreshRateTransferFunction;
    SEL setIsReference;
};

}  // namespace screenweaver::CGVirtualDisplayInterface
