#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver::platform {

/// The Objective-C runtime functions the system uses to reach classes it does not link against.
/// Messages are not sent through objc_msgSend: `ObjCMessage.hpp` calls the method's implementation
/// (class_getMethodImplementation) cast to the method's exact type, which works unchanged against
/// a simulated runtime.
struct ObjCRuntimeAPI {
    Class (*objc_lookUpClass)(const char* name);  // Nil when no such class is loaded
    Class (*objc_getClass)(const char* name);     // same as objc_lookUpClass
    SEL (*sel_registerName)(const char* str);
    const char* (*sel_getName)(SEL sel);
    BOOL (*class_respondsToSelector)(Class cls, SEL sel);
    IMP (*class_getMethodImplementation)(Class cls, SEL name);
    Class (*object_getClass)(id obj);  // for a class object, its metaclass
    const char* (*class_getName)(Class cls);
    void* (*objc_autoreleasePoolPush)(void);
    void (*objc_autoreleasePoolPop)(void* pool);
};

}  // namespace screenweaver::platform
