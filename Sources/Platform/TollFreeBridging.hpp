#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// CoreFoundation values and their Foundation counterparts are the same objects (a `CFStringRef` is
/// an `NSString *`, a `CFArrayRef` an `NSArray *`): these convert the pointer types without touching
/// the reference count, for passing CoreFoundation values as message arguments.
[[nodiscard]] inline id bridgeToObjC(CFTypeRef value) {
    return reinterpret_cast<id>(const_cast<void*>(value));
}

[[nodiscard]] inline CFTypeRef bridgeToCF(id object) {
    return object;
}

}  // namespace screenweaver::platform
