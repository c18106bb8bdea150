// The backend of a system with the X backend (selected by CMake off Apple platforms): the session's
// X server when one answers with RandR 1.5, else none to make displays with.
#include <fmt/format.h>

#include "CoreTypes/Log.hpp"
#include "Platform/X11/X11Connection.hpp"
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/X11/X11DisplayProbe.hpp"
#include "VirtualDisplayKit/X11/X11VirtualDisplayMaker.hpp"

namespace screenweaver {

VirtualDisplayBackend VirtualDisplayBackend::system(const platform::PlatformAPI& platform) {
    if (platform.x11 != nullptr) {
        auto opened = platform::x11::X11Connection::open(*platform.x11);
        if (opened) {
            const std::shared_ptr<const platform::x11::X11Connection> connection = std::move(*opened);
            return VirtualDisplayBackend{
                .outcome = VirtualDisplayGateOutcome::usable(false),
                .maker = std::make_unique<X11VirtualDisplayMaker>(connection),
                .probe = std::make_shared<X11DisplayProbe>(connection),
            };
        }
        Log::virtualDisplay().log(
            fmt::format("no X server to make displays on: {}", opened.error().reason()));
    }
    return coreGraphics(platform, std::make_shared<CoreGraphicsDisplayProbe>(platform));
}

}  // namespace screenweaver
