#pragma once

#include "Platform/ObjCMessage.hpp"
#include "Platform/ObjCRef.hpp"
#include "Platform/ObjCRuntimeAPI.hpp"

namespace screenweaver::platform {

/// Objective-C from plain C++ over a runtime table: class lookup, selectors, typed messages and
/// owners that follow Cocoa's retain/release rules. The selectors of NSObject's own methods are
/// resolved once, at construction; callers resolve theirs once too and keep them in a named table.
/// Cheap to copy; the table must outlive every copy and every owner made from it.
class ObjCRuntime {
public:
    explicit ObjCRuntime(const ObjCRuntimeAPI& api);

    [[nodiscard]] const ObjCRuntimeAPI& api() const { return *api_; }

    /// The class registered under `name`, or Nil when there is none.
    [[nodiscard]] Class lookUpClass(const char* name) const { return api_->objc_lookUpClass(name); }

    /// The selector named `name` (registered if new).
    [[nodiscard]] SEL selector(const char* name) const { return api_->sel_registerName(name); }

    /// An instance method message; see `sendMessage` for the exact-type rule.
    template <class Result, class... Arguments>
    Result send(id receiver, SEL selector, Arguments... arguments) const {
        return sendMessage<Result>(*api_, receiver, selector, arguments...);
    }

    /// A class method message (`+alloc`, `+instancesRespondToSelector:`).
    template <class Result, class... Arguments>
    Result send(Class receiver, SEL selector, Arguments... arguments) const {
        return sendMessage<Result>(*api_, classAsReceiver(receiver), selector, arguments...);
    }

    /// `-respondsToSelector:` of the object.
    [[nodiscard]] bool respondsToSelector(id object, SEL selector) const;

    /// `+instancesRespondToSelector:` of the class.
    [[nodiscard]] bool instancesRespondToSelector(Class cls, SEL selector) const;

    /// Owns an object the caller already owns (+1).
    [[nodiscard]] ObjCRef adopt(id object) const { return ObjCRef{*api_, object, release_}; }

    /// Retains a borrowed object and owns the new reference.
    [[nodiscard]] ObjCRef retain(id object) const { return adopt(send<id>(object, retain_)); }

    /// `[[cls alloc] initializer...]`: the allocated object is consumed by the initializer, whose
    /// result (+1) is owned; empty when the initializer refuses (answers nil), in which case the
    /// initializer has already released the allocated object.
    template <class... Arguments>
    [[nodiscard]] ObjCRef make(Class cls, SEL initializer, Arguments... arguments) const {
        const id allocated = send<id>(cls, alloc_);
        return adopt(send<id>(allocated, initializer, arguments...));
    }

private:
    const ObjCRuntimeAPI* api_;
    SEL alloc_;
    SEL retain_;
    SEL release_;
    SEL respondsToSelector_;
    SEL instancesRespondToSelector_;
};

}  // namespace screenweaver::platform
