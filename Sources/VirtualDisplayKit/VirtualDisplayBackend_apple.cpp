// The backend of a Mac (selected by CMake on Apple platforms): the window server's, always.
#include "VirtualDisplayKit/CoreGraphicsDisplayProbe.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"

namespace screenweaver {

VirtualDisplayBackend VirtualDisplayBackend::system(const platform::PlatformAPI& platform) {
    return coreGraphics(platform, std::make_shared<CoreGraphicsDisplayProbe>(platform));
}

}  // namespace screenweaver
