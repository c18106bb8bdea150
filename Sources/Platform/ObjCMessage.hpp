#pragma once

#include "Platform/ObjCRuntimeAPI.hpp"

namespace screenweaver::platform {

/// Sends `selector` with `arguments` to `receiver` (an object, or a class cast to `id` for a class
/// method) and returns the method's result.
///
/// The message goes to the method's implementation, looked up with class_getMethodImplementation and
/// called through a pointer of the method's exact type `Result (*)(id, SEL, Arguments...)`, never
/// through a variadic prototype. `Result` and the argument types must be exactly the method's:
/// pass `uint32_t{5120}`, not `5120`, for an `unsigned int` parameter, and `dispatch_queue_t`, not
/// `dispatch_queue_global_t`, where the method declares a queue. Because the implementation itself
/// is called, a struct result of any size follows the ordinary C calling convention: the
/// objc_msgSend / objc_msgSend_stret distinction of x86_64 does not arise.
///
/// A message to nil answers a zero value without calling anything, as in Objective-C.
template <class Result, class... Arguments>
Result sendMessage(const ObjCRuntimeAPI& runtime, id receiver, SEL selector, Arguments... arguments) {
    if (receiver == nullptr) {
        return Result();
    }
    const IMP implementation =
        runtime.class_getMethodImplementation(runtime.object_getClass(receiver), selector);
    const auto method = reinterpret_cast<Result (*)(id, SEL, Arguments...)>(implementation);
    return method(receiver, selector, arguments...);
}

/// The class object as a message receiver, for class methods such as `alloc`.
[[nodiscard]] inline id classAsReceiver(Class cls) {
    return reinterpret_cast<id>(cls);
}

}  // namespace screenweaver::platform
