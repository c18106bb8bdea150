#pragma once

#include <utility>

#include "Platform/ObjCMessage.hpp"
#include "Platform/ObjCRuntimeAPI.hpp"

namespace screenweaver::platform {

class ObjCRuntime;

/// Owns one reference to an Objective-C object and sends it `release` when dropped. Owners are made
/// by `ObjCRuntime::adopt` (for a +1 object: the result of `alloc`, `new`, `copy` or an `init...`
/// method, by Cocoa's naming rule) and `ObjCRuntime::retain` (for a borrowed object).
class ObjCRef {
public:
    ObjCRef() = default;

    ObjCRef(ObjCRef&& other) noexcept
        : runtime_(other.runtime_),
          object_(std::exchange(other.object_, nullptr)),
          releaseSelector_(other.releaseSelector_) {}

    ObjCRef& operator=(ObjCRef&& other) noexcept {
        if (this != &other) {
            reset();
            runtime_ = other.runtime_;
            object_ = std::exchange(other.object_, nullptr);
            releaseSelector_ = other.releaseSelector_;
        }
        return *this;
    }

    ObjCRef(const ObjCRef&) = delete;
    ObjCRef& operator=(const ObjCRef&) = delete;

    ~ObjCRef() { reset(); }

    [[nodiscard]] id get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Hands the +1 reference to the caller, who must release it; the owner becomes empty. This is
    /// how ownership passes into an `init...` message, which consumes its receiver.
    [[nodiscard]] id transferOwnership() { return std::exchange(object_, nullptr); }

    /// Sends `release` now; the owner becomes empty.
    void reset() {
        if (object_ != nullptr) {
            sendMessage<void>(*runtime_, std::exchange(object_, nullptr), releaseSelector_);
        }
    }

private:
    friend class ObjCRuntime;
    ObjCRef(const ObjCRuntimeAPI& runtime, id object, SEL releaseSelector)
        : runtime_(&runtime), object_(object), releaseSelector_(releaseSelector) {}

    const ObjCRuntimeAPI* runtime_ = nullptr;
    id object_ = nullptr;
    SEL releaseSelector_ = nullptr;
};

}  // namespace screenweaver::platform
