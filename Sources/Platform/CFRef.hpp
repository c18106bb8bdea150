#pragma once

#include <utility>

#include "Platform/CoreFoundationAPI.hpp"

namespace screenweaver::platform {

/// Owns one reference to a CoreFoundation value (`CFStringRef`, `CFArrayRef`, `CGDisplayModeRef`, ...)
/// and releases it through the table it was made with. Cocoa's naming rule decides which maker to
/// use: a value from a `Create` or `Copy` function is already owned (+1) and is adopted; a borrowed
/// value (an array's element, a `Get` result) is retained.
template <class Ref>
class CFRef {
public:
    CFRef() = default;

    /// Takes over the +1 reference the caller owns. A null value gives an empty owner.
    [[nodiscard]] static CFRef adopt(const CoreFoundationAPI& coreFoundation, Ref value) {
        return CFRef{coreFoundation, value};
    }

    /// Retains a borrowed value and owns that new reference.
    [[nodiscard]] static CFRef retain(const CoreFoundationAPI& coreFoundation, Ref value) {
        if (value != nullptr) {
            coreFoundation.CFRetain(value);
        }
        return CFRef{coreFoundation, value};
    }

    CFRef(CFRef&& other) noexcept
        : coreFoundation_(other.coreFoundation_), value_(std::exchange(other.value_, nullptr)) {}

    CFRef& operator=(CFRef&& other) noexcept {
        if (this != &other) {
            reset();
            coreFoundation_ = other.coreFoundation_;
            value_ = std::exchange(other.value_, nullptr);
        }
        return *this;
    }

    CFRef(const CFRef&) = delete;
    CFRef& operator=(const CFRef&) = delete;

    ~CFRef() { reset(); }

    [[nodiscard]] Ref get() const { return value_; }
    explicit operator bool() const { return value_ != nullptr; }

    /// Hands the +1 reference to the caller, who must release it; the owner becomes empty.
    [[nodiscard]] Ref transferOwnership() { return std::exchange(value_, nullptr); }

    /// Releases the value now; the owner becomes empty.
    void reset() {
        if (value_ != nullptr) {
            coreFoundation_->CFRelease(std::exchange(value_, nullptr));
        }
    }

private:
    CFRef(const CoreFoundationAPI& coreFoundation, Ref value)
        : coreFoundation_(&coreFoundation), value_(value) {}

    const CoreFoundationAPI* coreFoundation_ = nullptr;
    Ref value_ = nullptr;
};

}  // namespace screenweaver::platform
