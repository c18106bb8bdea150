#include <unistd.h>

#include "Platform/PlatformAPI.hpp"
#include "Platform/X11/XCBRandRAPI.hpp"

namespace screenweaver::platform {

PlatformAPI PlatformAPI::system() {
    PlatformAPI platform;
    platform.x11 = &x11::systemXCBRandR();
    platform.process.realUserID = getuid();
    return platform;
}

}  // namespace screenweaver::platform
