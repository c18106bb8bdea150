#include "Platform/ObjCRuntime.hpp"

namespace screenweaver::platform {

ObjCRuntime::ObjCRuntime(const ObjCRuntimeAPI& api)
    : api_(&api),
      alloc_(api.sel_registerName("alloc")),
      retain_(api.sel_registerName("retain")),
      release_(api.sel_registerName("release")),
      respondsToSelector_(api.sel_registerName("respondsToSelector:")),
      instancesRespondToSelector_(api.sel_registerName("instancesRespondToSelector:")) {}

bool ObjCRuntime::respondsToSelector(id object, SEL selector) const {
    return static_cast<bool>(send<BOOL>(object, respondsToSelector_, selector));
}

bool ObjCRuntime::instancesRespondToSelector(Class cls, SEL selector) const {
    return static_cast<bool>(send<BOOL>(cls, instancesRespondToSelector_, selector));
}

}  // namespace screenweaver::platform
