#include "VirtualDisplayKit/PrivateAPI/NativeVirtualDisplay.hpp"

#include <utility>

namespace screenweaver {

NativeVirtualDisplay::NativeVirtualDisplay(const platform::ObjCRuntime& runtime, platform::ObjCRef display,
                                           SEL displayIDSelector)
    : display_(std::move(display)),
      displayID_(runtime.send<unsigned int>(display_.get(), displayIDSelector)) {}

}  // namespace screenweaver
