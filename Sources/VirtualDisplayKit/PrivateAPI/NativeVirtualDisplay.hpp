#pragma once

#include <cstdint>

#include "Platform/ObjCRuntime.hpp"
#include "VirtualDisplayKit/RetainedDisplay.hpp"

namespace screenweaver {

/// Owns one `CGVirtualDisplay` object. The window server shows the display for as long as the
/// object lives; destroying the owner releases it and the display disappears.
class NativeVirtualDisplay final : public RetainedDisplay {
public:
    /// Takes over `display` (a +1 reference) and reads its `displayID` once.
    NativeVirtualDisplay(const platform::ObjCRuntime& runtime, platform::ObjCRef display,
                         SEL displayIDSelector);

    [[nodiscard]] std::uint32_t displayID() const override { return displayID_; }

private:
    platform::ObjCRef display_;
    std::uint32_t displayID_;
};

}  // namespace screenweaver
