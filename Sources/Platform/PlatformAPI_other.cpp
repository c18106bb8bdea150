#include <unistd.h>

#include "Platform/PlatformAPI.hpp"

namespace screenweaver::platform {

PlatformAPI PlatformAPI::system() {
    PlatformAPI platform;
    platform.process.realUserID = getuid();
    return platform;
}

}  // namespace screenweaver::platform
