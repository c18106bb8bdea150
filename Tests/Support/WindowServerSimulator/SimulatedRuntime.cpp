// The simulated Objective-C runtime: classes with metaclasses and method tables, selectors, the
// NSObject-style methods, and the four private virtual-display classes.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>

#include "WindowServerSimulator/SimulatorState.hpp"

namespace screenweaver::simulation {

namespace {

// The methods' implementations: plain functions of each method's exact type, reached by the sender
// through class_getMethodImplementation. They forward to the one live simulator.

id allocImplementation(id cls, SEL selector) {
    return SimulatorState::active().alloc(cls, selector);
}
BOOL instancesRespondImplementation(id cls, SEL selector, SEL asked) {
    return SimulatorState::active().instancesRespondToSelector(cls, selector, asked);
}
id initImplementation(id self, SEL selector) {
    return SimulatorState::active().init(self, selector);
}
id retainImplementation(id self, SEL selector) {
    return SimulatorState::active().retainMessage(self, selector);
}
void releaseImplementation(id self, SEL selector) {
    SimulatorState::active().releaseMessage(self, selector);
}
BOOL respondsImplementation(id self, SEL selector, SEL asked) {
    return SimulatorState::active().respondsToSelector(self, selector, asked);
}
void setQueueImplementation(id self, SEL selector, dispatch_queue_t queue) {
    SimulatorState::active().setQueue(self, selector, queue);
}
void setObjectImplementation(id self, SEL selector, id value) {
    SimulatorState::active().setObject(self, selector, value);
}
void setUnsignedImplementation(id self, SEL selector, unsigned int value) {
    SimulatorState::active().setUnsigned(self, selector, value);
}
void setSizeImplementation(id self, SEL selector, CGSize value) {
    SimulatorState::active().setSize(self, selector, value);
}
void setPointImplementation(id self, SEL selector, CGPoint value) {
    SimulatorState::active().setPoint(self, selector, value);
}
void setBoolImplementation(id self, SEL selector, BOOL value) {
    SimulatorState::active().setBool(self, selector, value);
}
id initModeImplementation(id self, SEL selector, unsigned int width, unsigned int height,
                          double refreshRate) {
    return SimulatorState::active().initMode(self, selector, width, height, refreshRate, std::nullopt);
}
id initModeWithTransferImplementation(id self, SEL selector, unsigned int width, unsigned int height,
                                      double refreshRate, unsigned int transferFunction) {
    return SimulatorState::active().initMode(self, selector, width, height, refreshRate, transferFunction);
}
id initWithDescriptorImplementation(id self, SEL selector, id descriptor) {
    return SimulatorState::active().initWithDescriptor(self, selector, descriptor);
}
BOOL applySettingsImplementation(id self, SEL selector, id settings) {
    return SimulatorState::active().applySettings(self, selector, settings);
}
unsigned int displayIDImplementation(id self, SEL selector) {
    return SimulatorState::active().displayIDMessage(self, selector);
}
// What the real runtime's forwarding does for a selector nobody answers: an uncaught exception.
void unrecognizedImplementation(id self, SEL selector) {
    SimulatorState::active().unrecognizedSelector(self, selector);
}

template <class Function>
IMP implementation(Function* function) {
    return reinterpret_cast<IMP>(function);
}

std::string formatDouble(double value) {
    std::string text = fmt::format("{}", value);
    if (text.find_first_of(".en") == std::string::npos) {
        text += ".0";
    }
    return text;
}

std::string formatPoint(double x, double y) {
    return fmt::format("({}, {})", formatDouble(x), formatDouble(y));
}

BOOL toBOOL(bool value) {
    return static_cast<BOOL>(value);
}

}  // namespace

// ---------------------------------------------------------------- classes and selectors

SimClass* SimulatorState::makeClass(const std::string& name, PrivateKind kind) {
    auto cls = std::make_unique<SimClass>();
    auto meta = std::make_unique<SimClass>();
    cls->name = name;
    cls->kind = kind;
    meta->name = name;
    meta->kind = kind;
    meta->isMeta = true;
    meta->instanceClass = cls.get();
    cls->metaclass = meta.get();

    const auto add = [&](SimClass& target, const char* selector, IMP method) {
        target.methods[registerSelector(selector)] = method;
    };
    add(*meta, "alloc", implementation(&allocImplementation));
    add(*meta, "instancesRespondToSelector:", implementation(&instancesRespondImplementation));
    add(*cls, "init", implementation(&initImplementation));
    add(*cls, "retain", implementation(&retainImplementation));
    add(*cls, "release", implementation(&releaseImplementation));
    add(*cls, "respondsToSelector:", implementation(&respondsImplementation));
    switch (kind) {
        case PrivateKind::plain:
            break;
        case PrivateKind::descriptor:
            add(*cls, "setQueue:", implementation(&setQueueImplementation));
            add(*cls, "setName:", implementation(&setObjectImplementation));
            for (const char* selector : {"setMaxPixelsWide:", "setMaxPixelsHigh:", "setSerialNum:",
                                         "setVendorID:", "setProductID:", "setSerialNumber:"}) {
                add(*cls, selector, implementation(&setUnsignedImplementation));
            }
            add(*cls, "setSizeInMillimeters:", implementation(&setSizeImplementation));
            for (const char* selector :
                 {"setRedPrimary:", "setGreenPrimary:", "setBluePrimary:", "setWhitePoint:"}) {
                add(*cls, selector, implementation(&setPointImplementation));
            }
            break;
        case PrivateKind::mode:
            add(*cls, "initWithWidth:height:refreshRate:", implementation(&initModeImplementation));
            add(*cls, "initWithWidth:height:refreshRate:transferFunction:",
                implementation(&initModeWithTransferImplementation));
            break;
        case PrivateKind::settings:
            add(*cls, "setModes:", implementation(&setObjectImplementation));
            add(*cls, "setHiDPI:", implementation(&setUnsignedImplementation));
            add(*cls, "setRotation:", implementation(&setUnsignedImplementation));
            add(*cls, "setIsReference:", implementation(&setBoolImplementation));
            break;
        case PrivateKind::display:
            add(*cls, "initWithDescriptor:", implementation(&initWithDescriptorImplementation));
            add(*cls, "applySettings:", implementation(&applySettingsImplementation));
            add(*cls, "displayID", implementation(&displayIDImplementation));
            break;
    }
    SimClass* const result = cls.get();
    classes_.push_back(std::move(cls));
    classes_.push_back(std::move(meta));
    return result;
}

SimClass* SimulatorState::lookUpClassPointer(const void* pointer) const {
    for (const auto& cls : classes_) {
        if (cls.get() == pointer) {
            return cls.get();
        }
    }
    return nullptr;
}

void SimulatorState::removeClass(std::string_view className) {
    Lock lock{mutex_};
    for (const auto& cls : classes_) {
        if (cls->name == className && !cls->isMeta) {
            cls->registered = false;
        }
    }
}

void SimulatorState::removeSelector(std::string_view className, std::string_view selector) {
    Lock lock{mutex_};
    const SEL removed = registerSelector(std::string{selector}.c_str());
    for (const auto& cls : classes_) {
        if (cls->name == className) {
            cls->methods.erase(removed);
        }
    }
}

Class SimulatorState::lookUpClass(const char* name, const char* function) {
    Lock lock{mutex_};
    record(CallFamily::objcRuntime, fmt::format("{}(\"{}\")", function, name));
    for (const auto& cls : classes_) {
        if (!cls->isMeta && cls->registered && cls->name == name) {
            return reinterpret_cast<Class>(cls.get());
        }
    }
    return nullptr;
}

SEL SimulatorState::registerSelector(const char* name) {
    Lock lock{mutex_};
    auto& interned = selectors_[name];
    if (!interned) {
        interned = std::make_unique<std::string>(name);
        selectorNames_.emplace(interned->c_str(), interned.get());
    }
    return reinterpret_cast<SEL>(const_cast<char*>(interned->c_str()));
}

const char* SimulatorState::selectorName(SEL selector) {
    Lock lock{mutex_};
    const auto found = selectorNames_.find(selector);
    if (found == selectorNames_.end()) {
        violation("sel_getName was given something that is not a selector");
        return "";
    }
    return found->second->c_str();
}

std::string SimulatorState::describeSelector(SEL selector) const {
    const auto found = selectorNames_.find(selector);
    return found != selectorNames_.end() ? *found->second : std::string{"<not a selector>"};
}

BOOL SimulatorState::classRespondsToSelector(Class cls, SEL selector) {
    Lock lock{mutex_};
    const SimClass* const found = lookUpClassPointer(cls);
    record(CallFamily::objcRuntime,
           fmt::format("class_respondsToSelector({}{}, {})", found != nullptr && found->isMeta ? "meta " : "",
                       describe(cls), describeSelector(selector)));
    return toBOOL(found != nullptr && found->methods.contains(selector));
}

IMP SimulatorState::methodImplementation(Class cls, SEL selector) {
    Lock lock{mutex_};
    const SimClass* const found = lookUpClassPointer(cls);
    record(CallFamily::objcRuntime, fmt::format("class_getMethodImplementation({}{}, {})",
                                                found != nullptr && found->isMeta ? "meta " : "",
                                                describe(cls), describeSelector(selector)));
    if (found == nullptr) {
        return nullptr;
    }
    const auto method = found->methods.find(selector);
    return method != found->methods.end() ? method->second : implementation(&unrecognizedImplementation);
}

Class SimulatorState::objectClass(id object) {
    Lock lock{mutex_};
    record(CallFamily::objcRuntime, fmt::format("object_getClass({})", describe(object)));
    if (object == nullptr) {
        return nullptr;
    }
    if (SimClass* const cls = lookUpClassPointer(object)) {
        return reinterpret_cast<Class>(cls->isMeta ? cls : cls->metaclass);
    }
    const SimObject* const found = lookUp(object);
    if (found == nullptr) {
        violation(fmt::format("object_getClass was given {}", describe(object)));
        return nullptr;
    }
    return reinterpret_cast<Class>(found->isa);
}

const char* SimulatorState::className(Class cls) {
    Lock lock{mutex_};
    record(CallFamily::objcRuntime, fmt::format("class_getName({})", describe(cls)));
    const SimClass* const found = lookUpClassPointer(cls);
    return found != nullptr ? found->name.c_str() : "nil";
}

void* SimulatorState::poolPush() {
    Lock lock{mutex_};
    record(CallFamily::objcRuntime, "objc_autoreleasePoolPush()");
    pools_.push_back(nextPool_++);
    return reinterpret_cast<void*>(pools_.back());
}

void SimulatorState::poolPop(void* pool) {
    Lock lock{mutex_};
    const auto token = reinterpret_cast<std::uintptr_t>(pool);
    record(CallFamily::objcRuntime, fmt::format("objc_autoreleasePoolPop(pool={})", token));
    const auto found = std::find(pools_.begin(), pools_.end(), token);
    if (found == pools_.end()) {
        violation(fmt::format("objc_autoreleasePoolPop was given pool {}, which is not open", token));
        return;
    }
    if (found + 1 != pools_.end()) {
        violation(fmt::format("objc_autoreleasePoolPop of pool {} while inner pools were open", token));
    }
    pools_.erase(found, pools_.end());
}

// ---------------------------------------------------------------- messages

std::string SimulatorState::receiverName(id self) const {
    if (const SimClass* const cls = lookUpClassPointer(self)) {
        return cls->name;
    }
    const SimObject* const object = lookUp(self);
    return object != nullptr ? object->isa->name : std::string{"<not an object>"};
}

std::string SimulatorState::messagePrefix(id self) const {
    return fmt::format("{}[{}", lookUpClassPointer(self) != nullptr ? "+" : "-", receiverName(self));
}

SimObject* SimulatorState::instanceOf(id self, PrivateKind kind) const {
    SimObject* const object = lookUp(self);
    if (object == nullptr || object->kind != ObjectKind::instance || object->isa->kind != kind) {
        static constexpr const char* classNames[] = {"NSObject", "CGVirtualDisplayDescriptor",
                                                     "CGVirtualDisplayMode", "CGVirtualDisplaySettings",
                                                     "CGVirtualDisplay"};
        violation(fmt::format("a message for {} reached {}", classNames[static_cast<std::size_t>(kind)],
                              describe(self)));
        return nullptr;
    }
    return object;
}

id SimulatorState::alloc(id cls, SEL selector) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {}]", messagePrefix(cls), describeSelector(selector)));
    SimClass* const found = lookUpClassPointer(cls);
    if (found == nullptr || found->isMeta) {
        violation("+alloc reached something that is not a class");
        return nullptr;
    }
    return reinterpret_cast<id>(newObject(ObjectKind::instance, found));
}

BOOL SimulatorState::instancesRespondToSelector(id cls, SEL selector, SEL asked) {
    Lock lock{mutex_};
    record(CallFamily::messages,
           fmt::format("{} {} {}]", messagePrefix(cls), describeSelector(selector), describeSelector(asked)));
    const SimClass* const found = lookUpClassPointer(cls);
    return toBOOL(found != nullptr && found->methods.contains(asked));
}

id SimulatorState::init(id self, SEL selector) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {}]", messagePrefix(self), describeSelector(selector)));
    if (SimObject* const object = lookUp(self)) {
        object->initialised = true;
    }
    return self;
}

id SimulatorState::retainMessage(id self, SEL selector) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {}]", messagePrefix(self), describeSelector(selector)));
    if (SimObject* const object = lookUp(self)) {
        retainObject(object);
    }
    return self;
}

void SimulatorState::releaseMessage(id self, SEL selector) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {}]", messagePrefix(self), describeSelector(selector)));
    if (SimObject* const object = lookUp(self)) {
        releaseObject(object);
    }
}

BOOL SimulatorState::respondsToSelector(id self, SEL selector, SEL asked) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector),
                                             describeSelector(asked)));
    const SimObject* const object = lookUp(self);
    return toBOOL(object != nullptr && object->isa->methods.contains(asked));
}

void SimulatorState::setQueue(id self, SEL selector, dispatch_queue_t queue) {
    Lock lock{mutex_};
    const auto name = globalQueueName(queue);
    record(CallFamily::messages,
           fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector),
                       name ? fmt::format("<global queue {}>", *name) : describe(queue)));
    if (SimObject* const descriptor = instanceOf(self, PrivateKind::descriptor)) {
        descriptor->descriptor.queue = name.value_or("<unknown queue>");
    }
}

void SimulatorState::setObject(id self, SEL selector, id value) {
    Lock lock{mutex_};
    const std::string name = describeSelector(selector);
    record(CallFamily::messages, fmt::format("{} {} {}]", messagePrefix(self), name, describe(value)));
    const SimObject* const argument = lookUp(value);
    if (name == "setName:") {
        SimObject* const descriptor = instanceOf(self, PrivateKind::descriptor);
        if (descriptor != nullptr && argument != nullptr && argument->kind == ObjectKind::string) {
            descriptor->descriptor.name = argument->text;
        }
        return;
    }
    SimObject* const settings = instanceOf(self, PrivateKind::settings);
    if (settings == nullptr || argument == nullptr || argument->kind != ObjectKind::array) {
        violation(fmt::format("setModes: was given {}", describe(value)));
        return;
    }
    settings->settings.modes.clear();
    for (const void* element : argument->elements) {
        const SimObject* const mode = lookUp(element);
        if (mode == nullptr || mode->kind != ObjectKind::instance || mode->isa->kind != PrivateKind::mode) {
            violation(fmt::format("setModes: was given {} among its modes", describe(element)));
            continue;
        }
        settings->settings.modes.push_back(mode->modeValues);
    }
}

void SimulatorState::setUnsigned(id self, SEL selector, unsigned int value) {
    Lock lock{mutex_};
    const std::string name = describeSelector(selector);
    record(CallFamily::messages, fmt::format("{} {} {}]", messagePrefix(self), name, value));
    if (const SimObject* const object = lookUp(self);
        object != nullptr && object->isa->kind == PrivateKind::settings) {
        SimObject* const settings = instanceOf(self, PrivateKind::settings);
        (name == "setHiDPI:" ? settings->settings.hiDPI : settings->settings.rotation) = value;
        return;
    }
    SimObject* const descriptor = instanceOf(self, PrivateKind::descriptor);
    if (descriptor == nullptr) {
        return;
    }
    DescriptorValues& values = descriptor->descriptor;
    if (name == "setMaxPixelsWide:") {
        values.maxPixelsWide = value;
    } else if (name == "setMaxPixelsHigh:") {
        values.maxPixelsHigh = value;
    } else if (name == "setSerialNum:") {
        values.serialNum = value;
    } else if (name == "setVendorID:") {
        values.vendorID = value;
    } else if (name == "setProductID:") {
        values.productID = value;
    } else {
        values.serialNumber = value;
    }
}

void SimulatorState::setSize(id self, SEL selector, CGSize value) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector),
                                             formatPoint(value.width, value.height)));
    if (SimObject* const descriptor = instanceOf(self, PrivateKind::descriptor)) {
        descriptor->descriptor.sizeInMillimeters = value;
    }
}

void SimulatorState::setPoint(id self, SEL selector, CGPoint value) {
    Lock lock{mutex_};
    const std::string name = describeSelector(selector);
    record(CallFamily::messages,
           fmt::format("{} {} {}]", messagePrefix(self), name, formatPoint(value.x, value.y)));
    SimObject* const descriptor = instanceOf(self, PrivateKind::descriptor);
    if (descriptor == nullptr) {
        return;
    }
    DescriptorValues& values = descriptor->descriptor;
    if (name == "setRedPrimary:") {
        values.redPrimary = value;
    } else if (name == "setGreenPrimary:") {
        values.greenPrimary = value;
    } else if (name == "setBluePrimary:") {
        values.bluePrimary = value;
    } else {
        values.whitePoint = value;
    }
}

void SimulatorState::setBool(id self, SEL selector, BOOL value) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector),
                                             value != 0 ? "YES" : "NO"));
    if (SimObject* const settings = instanceOf(self, PrivateKind::settings)) {
        settings->settings.isReference = value != 0;
    }
}

id SimulatorState::initMode(id self, SEL selector, unsigned int width, unsigned int height,
                            double refreshRate, std::optional<unsigned int> transferFunction) {
    Lock lock{mutex_};
    std::string line = fmt::format("{} initWithWidth: {} height: {} refreshRate: {}", messagePrefix(self),
                                   width, height, formatDouble(refreshRate));
    if (transferFunction) {
        line += fmt::format(" transferFunction: {}", *transferFunction);
    }
    record(CallFamily::messages, line + "]");
    static_cast<void>(selector);
    SimObject* const mode = instanceOf(self, PrivateKind::mode);
    if (mode == nullptr) {
        return nullptr;
    }
    mode->modeValues = ModeValues{width, height, refreshRate, transferFunction};
    mode->initialised = true;
    return self;
}

id SimulatorState::initWithDescriptor(id self, SEL selector, id descriptor) {
    Lock lock{mutex_};
    record(CallFamily::messages,
           fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector), describe(descriptor)));
    SimObject* const display = instanceOf(self, PrivateKind::display);
    const SimObject* const source = lookUp(descriptor);
    if (display == nullptr || source == nullptr || source->kind != ObjectKind::instance ||
        source->isa->kind != PrivateKind::descriptor) {
        violation(fmt::format("initWithDescriptor: was given {}", describe(descriptor)));
        return nullptr;
    }
    const std::size_t attempt = descriptorAttempts_++;
    const DescriptorValues& values = source->descriptor;
    const double widthInches = values.sizeInMillimeters.width / 25.4;
    const double density = widthInches > 0 ? values.maxPixelsWide / widthInches : 0;
    const bool refused =
        script_.refuseEveryDescriptor ||
        (attempt < script_.refuseAttempts.size() && script_.refuseAttempts[attempt]) ||
        (script_.refuseDescriptorsAboveDensity && density > *script_.refuseDescriptorsAboveDensity);
    if (refused) {
        // An initialiser that fails releases its receiver and answers nil.
        releaseObject(display);
        return nullptr;
    }
    display->initialised = true;
    display->displayID = nextVirtualDisplayID_++;
    display->recordIndex = records_.size();
    records_.push_back(VirtualDisplayRecord{display->displayID, values, std::nullopt, true});
    return self;
}

BOOL SimulatorState::applySettings(id self, SEL selector, id settings) {
    Lock lock{mutex_};
    record(CallFamily::messages,
           fmt::format("{} {} {}]", messagePrefix(self), describeSelector(selector), describe(settings)));
    SimObject* const display = instanceOf(self, PrivateKind::display);
    const SimObject* const source = lookUp(settings);
    if (display == nullptr || !display->recordIndex || source == nullptr ||
        source->kind != ObjectKind::instance || source->isa->kind != PrivateKind::settings) {
        violation(fmt::format("applySettings: was given {}", describe(settings)));
        return toBOOL(false);
    }
    if (script_.rejectSettings) {
        return toBOOL(false);
    }
    records_[*display->recordIndex].settings = source->settings;
    if (!display->displayCreated) {
        display->displayCreated = true;
        SimulatedDisplay created = virtualDisplayFor(*display, source->settings);
        if (script_.appearanceDelay > std::chrono::nanoseconds::zero()) {
            pending_.push_back(PendingDisplay{std::move(created), clock_.now() + script_.appearanceDelay});
        } else {
            connect(std::move(created));
        }
    }
    return toBOOL(true);
}

SimulatedDisplay SimulatorState::virtualDisplayFor(const SimObject& display,
                                                   const SettingsValues& settings) const {
    const DescriptorValues& descriptor = records_[*display.recordIndex].descriptor;
    SimulatedDisplay created;
    created.displayID = display.displayID;
    created.vendorNumber = descriptor.vendorID;
    created.modelNumber = descriptor.productID;
    created.serialNumber = descriptor.serialNum;
    created.colorSyncUUID = fmt::format("5357A11C-0000-4000-8000-{:012X}", display.displayID);
    const std::size_t scale = settings.hiDPI != 0 ? 2 : 1;
    for (const ModeValues& mode : settings.modes) {
        created.modes.push_back(SimulatedMode{mode.width * scale, mode.height * scale, mode.width,
                                              mode.height, mode.refreshRate, false});
        if (scale == 2) {
            created.modes.push_back(
                SimulatedMode{mode.width, mode.height, mode.width, mode.height, mode.refreshRate, true});
        }
    }
    if (!created.modes.empty()) {
        created.currentMode = 0;
    }
    if (script_.appearsAtPixelSize) {
        const auto [width, height] = *script_.appearsAtPixelSize;
        const auto found =
            std::find_if(created.modes.begin(), created.modes.end(), [&](const SimulatedMode& mode) {
                return mode.pixelWidth == width && mode.pixelHeight == height;
            });
        if (found != created.modes.end()) {
            created.currentMode = static_cast<std::size_t>(found - created.modes.begin());
        } else {
            const double rate = settings.modes.empty() ? 60.0 : settings.modes.front().refreshRate;
            created.modes.push_back(SimulatedMode{width, height, width / scale, height / scale, rate, false});
            created.currentMode = created.modes.size() - 1;
        }
    }
    double right = 0;
    for (const SimulatedDisplay& other : displays_) {
        const double width =
            other.currentMode ? static_cast<double>(other.modes[*other.currentMode].pointWidth) : 0.0;
        right = std::max(right, other.origin.x + width);
    }
    created.origin = CGPoint{right, 0};
    if (script_.appearsMirrored) {
        for (const SimulatedDisplay& other : displays_) {
            if (other.main) {
                created.mirrorSource = other.displayID;
            }
        }
    }
    created.acceptsModeSwitch = script_.acceptsModeSwitch;
    return created;
}

unsigned int SimulatorState::displayIDMessage(id self, SEL selector) {
    Lock lock{mutex_};
    record(CallFamily::messages, fmt::format("{} {}]", messagePrefix(self), describeSelector(selector)));
    const SimObject* const display = instanceOf(self, PrivateKind::display);
    if (display == nullptr || script_.answersZeroDisplayID) {
        return 0;
    }
    return display->displayID;
}

void SimulatorState::unrecognizedSelector(id self, SEL selector) {
    Lock lock{mutex_};
    std::fprintf(stderr, "WindowServerSimulator: %s %s]: unrecognized selector sent\n",
                 messagePrefix(self).c_str(), describeSelector(selector).c_str());
    std::abort();
}

}  // namespace screenweaver::simulation
