#pragma once

#include "Platform/ObjCRuntimeAPI.hpp"

namespace screenweaver::platform {

/// An autorelease pool for the lifetime of this scope: objects autoreleased inside it are released
/// when it ends, so temporary Objective-C objects go away at once. Scopes nest and must end in the
/// reverse order of their beginning, which a scope object guarantees.
class AutoreleasePool {
public:
    explicit AutoreleasePool(const ObjCRuntimeAPI& runtime)
        : runtime_(runtime), pool_(runtime.objc_autoreleasePoolPush()) {}
    ~AutoreleasePool() { runtime_.objc_autoreleasePoolPop(pool_); }

    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
    const ObjCRuntimeAPI& runtime_;
    void* pool_;
};

}  // namespace screenweaver::platform
