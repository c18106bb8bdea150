#include "WindowServerSimulator/SimulatorState.hpp"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>

namespace screenweaver::simulation {

namespace {

std::atomic<SimulatorState*> activeSimulator{nullptr};

[[noreturn]] void stop(const char* message) {
    std::fprintf(stderr, "WindowServerSimulator: %s\n", message);
    std::abort();
}

// Type IDs as CoreFoundation would hand them out: distinct per kind, stable for the process.
constexpr CFTypeID cf_objectTypeID = 1;
constexpr CFTypeID cf_stringTypeID = 7;
constexpr CFTypeID cf_dictionaryTypeID = 18;
constexpr CFTypeID cf_arrayTypeID = 19;
constexpr CFTypeID cf_booleanTypeID = 21;
constexpr CFTypeID cf_uuidTypeID = 30;
constexpr CFTypeID cf_displayModeTypeID = 270;

std::string formatDouble(double value) {
    std::string text = fmt::format("{}", value);
    if (text.find_first_of(".en") == std::string::npos) {
        text += ".0";
    }
    return text;
}

std::string describeMode(const SimulatedMode& mode) {
    return fmt::format("{}x{}/{}x{}@{}", mode.pixelWidth, mode.pixelHeight, mode.pointWidth, mode.pointHeight,
                       formatDouble(mode.refreshRate));
}

std::string encodingName(CFStringEncoding encoding) {
    switch (encoding) {
        case kCFStringEncodingUTF8:
            return "UTF8";
        case kCFStringEncodingASCII:
            return "ASCII";
        default:
            return fmt::format("{:#x}", encoding);
    }
}

std::string optionName(CGConfigureOption option) {
    switch (option) {
        case kCGConfigureForAppOnly:
            return "kCGConfigureForAppOnly";
        case kCGConfigureForSession:
            return "kCGConfigureForSession";
        case kCGConfigurePermanently:
            return "kCGConfigurePermanently";
        default:
            return std::to_string(option);
    }
}

bool isValidUTF8(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        const auto lead = static_cast<unsigned char>(text[index]);
        std::size_t length = 0;
        if (lead < 0x80) {
            length = 1;
        } else if ((lead >> 5) == 0x6) {
            length = 2;
        } else if ((lead >> 4) == 0xE) {
            length = 3;
        } else if ((lead >> 3) == 0x1E) {
            length = 4;
        } else {
            return false;
        }
        if (index + length > text.size()) {
            return false;
        }
        for (std::size_t next = 1; next < length; ++next) {
            if ((static_cast<unsigned char>(text[index + next]) >> 6) != 0x2) {
                return false;
            }
        }
        index += length;
    }
    return true;
}

// UTF-16 code units of valid UTF-8 text: one per code point, two above the basic plane.
CFIndex utf16Length(std::string_view text) {
    CFIndex length = 0;
    for (const char byte : text) {
        const auto unit = static_cast<unsigned char>(byte);
        if ((unit >> 6) != 0x2) {
            length += (unit >> 3) == 0x1E ? 2 : 1;
        }
    }
    return length;
}

// The ColorSync UUID in CoreFoundation's form; stops the process on text that is not a UUID,
// which is a mistake in the test.
std::string canonicalUUID(const std::string& text) {
    static constexpr std::size_t groups[] = {8, 4, 4, 4, 12};
    std::string canonical;
    std::size_t index = 0;
    for (std::size_t group = 0; group < 5; ++group) {
        if (group > 0) {
            if (index >= text.size() || text[index] != '-') {
                stop("a colorSyncUUID is not in 8-4-4-4-12 form");
            }
            canonical += '-';
            ++index;
        }
        for (std::size_t digit = 0; digit < groups[group]; ++digit, ++index) {
            if (index >= text.size() || std::isxdigit(static_cast<unsigned char>(text[index])) == 0) {
                stop("a colorSyncUUID is not in 8-4-4-4-12 form");
            }
            canonical += static_cast<char>(std::toupper(static_cast<unsigned char>(text[index])));
        }
    }
    if (index != text.size()) {
        stop("a colorSyncUUID is not in 8-4-4-4-12 form");
    }
    return canonical;
}

const std::pair<intptr_t, const char*> qualityOfServiceClasses[] = {
    {QOS_CLASS_USER_INTERACTIVE, "QOS_CLASS_USER_INTERACTIVE"},
    {QOS_CLASS_USER_INITIATED, "QOS_CLASS_USER_INITIATED"},
    {QOS_CLASS_DEFAULT, "QOS_CLASS_DEFAULT"},
    {QOS_CLASS_UTILITY, "QOS_CLASS_UTILITY"},
    {QOS_CLASS_BACKGROUND, "QOS_CLASS_BACKGROUND"},
    {QOS_CLASS_UNSPECIFIED, "QOS_CLASS_UNSPECIFIED"},
};

// The global queues are addresses only: nothing is ever run on them here.
char globalQueueStorage[std::size(qualityOfServiceClasses)];

}  // namespace

SimulatedDisplay makeDisplay(CGDirectDisplayID displayID, std::size_t pixelWidth, std::size_t pixelHeight,
                             double refreshRate) {
    SimulatedDisplay display;
    display.displayID = displayID;
    display.modes = {SimulatedMode{pixelWidth, pixelHeight, pixelWidth, pixelHeight, refreshRate, false}};
    display.currentMode = 0;
    return display;
}

// ---------------------------------------------------------------- life

SimulatorState::SimulatorState(const Clock& clock) : clock_(clock) {
    SimObject* const trueValue = newObject(ObjectKind::boolean, nullptr);
    trueValue->immortal = true;
    trueValue_ = trueValue;
    SimObject* const key = newString("kCGDisplayShowDuplicateLowResolutionModes");
    key->immortal = true;
    duplicateModesKey_ = key;
    coreGraphics_ = simulatedCoreGraphics(duplicateModesKey());
    colorSync_ = simulatedColorSync();
    coreFoundation_ = simulatedCoreFoundation(booleanTrue());
    objcRuntime_ = simulatedObjCRuntime();
    dispatch_ = simulatedDispatch();

    bridgeClass_ = makeClass("__NSCFType", PrivateKind::plain);
    makeClass("NSObject", PrivateKind::plain);
    makeClass("CGVirtualDisplayDescriptor", PrivateKind::descriptor);
    makeClass("CGVirtualDisplayMode", PrivateKind::mode);
    makeClass("CGVirtualDisplaySettings", PrivateKind::settings);
    makeClass("CGVirtualDisplay", PrivateKind::display);

    SimulatorState* expected = nullptr;
    if (!activeSimulator.compare_exchange_strong(expected, this)) {
        stop("a second simulator was created while one is alive");
    }
    callbackThread_ = std::thread{[this] { deliverCallbacks(); }};
}

SimulatorState::~SimulatorState() {
    {
        Lock lock{mutex_};
        stopping_ = true;
    }
    changed_.notify_all();
    callbackThread_.join();
    activeSimulator.store(nullptr);
}

SimulatorState& SimulatorState::active() {
    SimulatorState* const simulator = activeSimulator.load();
    if (simulator == nullptr) {
        stop("a platform function was called with no simulator alive");
    }
    return *simulator;
}

void SimulatorState::record(CallFamily family, std::string line) const {
    calls_.emplace_back(family, std::move(line));
}

void SimulatorState::violation(std::string problem) const {
    violations_.push_back(std::move(problem));
}

std::optional<CGError> SimulatorState::takeFailure(std::string_view function) {
    const auto found = failures_.find(function);
    if (found == failures_.end()) {
        return std::nullopt;
    }
    ScriptedFailure& scripted = found->second;
    const int call = scripted.seen++;
    if (call < scripted.failure.skip) {
        return std::nullopt;
    }
    if (scripted.failure.count && call - scripted.failure.skip >= *scripted.failure.count) {
        return std::nullopt;
    }
    return scripted.failure.error;
}

// ---------------------------------------------------------------- test-facing

platform::PlatformAPI SimulatorState::platform() const {
    Lock lock{mutex_};
    return platform::PlatformAPI{
        .coreGraphics = &coreGraphics_,
        .colorSync = &colorSync_,
        .coreFoundation = &coreFoundation_,
        .objcRuntime = &objcRuntime_,
        .dispatch = &dispatch_,
        .process = processFacts_,
    };
}

void SimulatorState::setProcessFacts(platform::ProcessFacts facts) {
    Lock lock{mutex_};
    processFacts_ = facts;
}

void SimulatorState::addDisplay(SimulatedDisplay display) {
    Lock lock{mutex_};
    if (display.displayID == 0 || findDisplay(display.displayID) != nullptr) {
        stop("addDisplay needs a new, non-zero display ID");
    }
    connect(std::move(display));
}

void SimulatorState::addDisplayLater(SimulatedDisplay display, Clock::Duration delay) {
    Lock lock{mutex_};
    if (display.displayID == 0 || findDisplay(display.displayID) != nullptr) {
        stop("addDisplayLater needs a new, non-zero display ID");
    }
    pending_.push_back(PendingDisplay{std::move(display), clock_.now() + delay});
}

void SimulatorState::removeDisplayLater(CGDirectDisplayID displayID, Clock::Duration delay) {
    Lock lock{mutex_};
    pendingRemovals_.push_back(PendingRemoval{displayID, clock_.now() + delay});
}

void SimulatorState::removeDisplay(CGDirectDisplayID displayID) {
    Lock lock{mutex_};
    if (findDisplay(displayID) == nullptr) {
        stop("removeDisplay of an unknown display");
    }
    disconnect(displayID);
}

void SimulatorState::moveDisplay(CGDirectDisplayID displayID, CGPoint origin) {
    Lock lock{mutex_};
    SimulatedDisplay* const display = findDisplay(displayID);
    if (display == nullptr) {
        stop("moveDisplay of an unknown display");
    }
    const auto before = activeIDs();
    display->origin = origin;
    queueBurst(before, {{displayID, kCGDisplayMovedFlag | kCGDisplayDesktopShapeChangedFlag}});
}

void SimulatorState::setCurrentMode(CGDirectDisplayID displayID, std::size_t modeIndex) {
    Lock lock{mutex_};
    SimulatedDisplay* const display = findDisplay(displayID);
    if (display == nullptr || modeIndex >= display->modes.size()) {
        stop("setCurrentMode of an unknown display or mode");
    }
    const auto before = activeIDs();
    display->currentMode = modeIndex;
    queueBurst(before, {{displayID, kCGDisplaySetModeFlag | kCGDisplayDesktopShapeChangedFlag}});
}

void SimulatorState::setMirrorSource(CGDirectDisplayID displayID, CGDirectDisplayID source) {
    Lock lock{mutex_};
    SimulatedDisplay* const display = findDisplay(displayID);
    if (display == nullptr) {
        stop("setMirrorSource of an unknown display");
    }
    const auto before = activeIDs();
    display->mirrorSource = source;
    queueBurst(before, {{displayID, source != 0 ? kCGDisplayMirrorFlag : kCGDisplayUnMirrorFlag}});
}

void SimulatorState::editDisplayQuietly(CGDirectDisplayID displayID,
                                        const std::function<void(SimulatedDisplay&)>& edit) {
    Lock lock{mutex_};
    SimulatedDisplay* const display = findDisplay(displayID);
    if (display == nullptr) {
        stop("editDisplayQuietly of an unknown display");
    }
    edit(*display);
    if (display->displayID != displayID) {
        stop("editDisplayQuietly may not change the display ID");
    }
}

std::optional<SimulatedDisplay> SimulatorState::display(CGDirectDisplayID displayID) const {
    Lock lock{mutex_};
    const SimulatedDisplay* const found = findDisplay(displayID);
    return found != nullptr ? std::optional{*found} : std::nullopt;
}

std::vector<CGDirectDisplayID> SimulatorState::activeDisplayIDs() const {
    Lock lock{mutex_};
    return activeIDs();
}

void SimulatorState::failCalls(std::string_view function, Failure failure) {
    Lock lock{mutex_};
    failures_.insert_or_assign(std::string{function}, ScriptedFailure{failure, 0});
}

void SimulatorState::clearFailures() {
    Lock lock{mutex_};
    failures_.clear();
}

void SimulatorState::waitForCallbacks() {
    Lock lock{mutex_};
    if (std::this_thread::get_id() == callbackThread_.get_id()) {
        stop("waitForCallbacks was called from a reconfiguration callback");
    }
    bringInDueDisplays();
    changed_.wait(lock, [&] { return bursts_.empty() && !delivering_; });
}

std::size_t SimulatorState::registeredCallbackCount() const {
    Lock lock{mutex_};
    return callbacks_.size();
}

void SimulatorState::setVirtualDisplayScript(VirtualDisplayScript script) {
    Lock lock{mutex_};
    script_ = std::move(script);
}

std::vector<VirtualDisplayRecord> SimulatorState::virtualDisplays() const {
    Lock lock{mutex_};
    return records_;
}

std::size_t SimulatorState::descriptorAttempts() const {
    Lock lock{mutex_};
    return descriptorAttempts_;
}

std::vector<std::string> SimulatorState::calls(std::optional<CallFamily> family) const {
    Lock lock{mutex_};
    std::vector<std::string> lines;
    for (const auto& [callFamily, line] : calls_) {
        if (!family || callFamily == *family) {
            lines.push_back(line);
        }
    }
    return lines;
}

void SimulatorState::clearCalls() {
    Lock lock{mutex_};
    calls_.clear();
}

std::vector<std::string> SimulatorState::hygieneProblems() const {
    Lock lock{mutex_};
    std::vector<std::string> problems;
    std::vector<const SimObject*> leaked;
    for (const auto& [pointer, object] : objects_) {
        if (!object->immortal) {
            leaked.push_back(object.get());
        }
    }
    std::sort(leaked.begin(), leaked.end(),
              [](const SimObject* left, const SimObject* right) { return left->creation < right->creation; });
    for (const SimObject* object : leaked) {
        problems.push_back(fmt::format("leaked {} (retain count {})", describe(object), object->retainCount));
    }
    if (!pools_.empty()) {
        problems.push_back(fmt::format("{} autorelease pool(s) left open", pools_.size()));
    }
    for (const auto& [configuration, staged] : configurations_) {
        problems.push_back(fmt::format("configuration {} neither completed nor cancelled", configuration));
    }
    if (!callbacks_.empty()) {
        problems.push_back(fmt::format("{} reconfiguration callback(s) still registered", callbacks_.size()));
    }
    problems.insert(problems.end(), violations_.begin(), violations_.end());
    return problems;
}

// ---------------------------------------------------------------- objects

SimObject* SimulatorState::newObject(ObjectKind kind, SimClass* isa) {
    auto object = std::make_unique<SimObject>();
    object->kind = kind;
    object->creation = objectsCreated_++;
    object->isa = isa != nullptr ? isa : bridgeClass_;
    SimObject* const pointer = object.get();
    objects_.emplace(pointer, std::move(object));
    return pointer;
}

SimObject* SimulatorState::newString(std::string text) {
    SimObject* const string = newObject(ObjectKind::string, nullptr);
    string->text = std::move(text);
    return string;
}

SimObject* SimulatorState::newMode(const SimulatedMode& mode, CGDirectDisplayID display) {
    SimObject* const object = newObject(ObjectKind::displayMode, nullptr);
    object->mode = mode;
    object->modeDisplay = display;
    return object;
}

SimObject* SimulatorState::lookUp(const void* pointer) const {
    const auto found = objects_.find(pointer);
    return found != objects_.end() ? found->second.get() : nullptr;
}

SimObject* SimulatorState::lookUpKind(const void* pointer, ObjectKind kind, std::string_view function) const {
    SimObject* const object = lookUp(pointer);
    if (object == nullptr || object->kind != kind) {
        violation(fmt::format("{} was given {}", function, describe(pointer)));
        return nullptr;
    }
    return object;
}

void SimulatorState::retainObject(SimObject* object) {
    if (!object->immortal) {
        ++object->retainCount;
    }
}

void SimulatorState::releaseObject(SimObject* object) {
    if (object->immortal) {
        return;
    }
    if (--object->retainCount == 0) {
        destroy(object);
    }
}

void SimulatorState::destroy(SimObject* object) {
    std::vector<const void*> contained;
    if (object->retainsElements) {
        contained = object->elements;
        contained.insert(contained.end(), object->values.begin(), object->values.end());
    }
    if (object->kind == ObjectKind::instance && object->isa->kind == PrivateKind::display) {
        if (object->recordIndex) {
            records_[*object->recordIndex].alive = false;
        }
        if (object->displayCreated) {
            std::erase_if(pending_, [&](const PendingDisplay& late) {
                return late.display.displayID == object->displayID;
            });
            if (findDisplay(object->displayID) != nullptr) {
                disconnect(object->displayID);
            }
        }
    }
    objects_.erase(object);
    for (const void* element : contained) {
        if (SimObject* const child = lookUp(element)) {
            releaseObject(child);
        }
    }
}

std::string SimulatorState::describe(const void* pointer) const {
    if (pointer == nullptr) {
        return "NULL";
    }
    if (const SimClass* const cls = lookUpClassPointer(pointer)) {
        return cls->name;
    }
    const SimObject* const object = lookUp(pointer);
    if (object == nullptr) {
        return "<not an object>";
    }
    switch (object->kind) {
        case ObjectKind::string:
            return fmt::format("\"{}\"", object->text);
        case ObjectKind::boolean:
            return "true";
        case ObjectKind::uuid:
            return fmt::format("<CFUUID {}>", object->text);
        case ObjectKind::displayMode:
            return describeMode(object->mode);
        case ObjectKind::array: {
            std::vector<std::string> parts;
            for (const void* element : object->elements) {
                parts.push_back(describe(element));
            }
            return fmt::format("[{}]", fmt::join(parts, ", "));
        }
        case ObjectKind::dictionary: {
            std::vector<std::string> parts;
            for (std::size_t index = 0; index < object->elements.size(); ++index) {
                const std::string key = object->elements[index] == duplicateModesKey_
                                            ? "kCGDisplayShowDuplicateLowResolutionModes"
                                            : describe(object->elements[index]);
                parts.push_back(fmt::format("{}: {}", key, describe(object->values[index])));
            }
            return fmt::format("{{{}}}", fmt::join(parts, ", "));
        }
        case ObjectKind::instance:
            if (object->isa->kind == PrivateKind::mode && object->initialised) {
                return fmt::format("<CGVirtualDisplayMode {}x{}@{}>", object->modeValues.width,
                                   object->modeValues.height, formatDouble(object->modeValues.refreshRate));
            }
            return fmt::format("<{}>", object->isa->name);
    }
    return "<unknown>";
}

// ---------------------------------------------------------------- the display model

SimulatedDisplay* SimulatorState::findDisplay(CGDirectDisplayID displayID) {
    const auto found = std::find_if(displays_.begin(), displays_.end(), [&](const SimulatedDisplay& display) {
        return display.displayID == displayID;
    });
    return found != displays_.end() ? &*found : nullptr;
}

const SimulatedDisplay* SimulatorState::findDisplay(CGDirectDisplayID displayID) const {
    const auto found = std::find_if(displays_.begin(), displays_.end(), [&](const SimulatedDisplay& display) {
        return display.displayID == displayID;
    });
    return found != displays_.end() ? &*found : nullptr;
}

std::vector<CGDirectDisplayID> SimulatorState::activeIDs() const {
    std::vector<CGDirectDisplayID> ids;
    for (const SimulatedDisplay& display : displays_) {
        if (display.main) {
            ids.push_back(display.displayID);
        }
    }
    for (const SimulatedDisplay& display : displays_) {
        if (!display.main) {
            ids.push_back(display.displayID);
        }
    }
    return ids;
}

void SimulatorState::bringInDueDisplays() {
    const Clock::Instant now = clock_.now();
    std::vector<SimulatedDisplay> arriving;
    std::erase_if(pending_, [&](PendingDisplay& late) {
        if (late.due > now) {
            return false;
        }
        arriving.push_back(std::move(late.display));
        return true;
    });
    for (SimulatedDisplay& display : arriving) {
        connect(std::move(display));
    }
    std::vector<CGDirectDisplayID> leaving;
    std::erase_if(pendingRemovals_, [&](const PendingRemoval& removal) {
        if (removal.due > now) {
            return false;
        }
        leaving.push_back(removal.displayID);
        return true;
    });
    for (const CGDirectDisplayID displayID : leaving) {
        if (findDisplay(displayID) != nullptr) {
            disconnect(displayID);
        }
    }
}

void SimulatorState::queueBurst(const std::vector<CGDirectDisplayID>& onlineBefore,
                                const std::vector<CallbackCall>& ends) {
    if (ends.empty()) {
        return;
    }
    std::vector<CallbackCall> burst;
    // The window server announces a change to every display online before it; with none online
    // (the first display arriving) the affected displays are told instead.
    if (onlineBefore.empty()) {
        for (const auto& [displayID, flags] : ends) {
            burst.emplace_back(displayID, kCGDisplayBeginConfigurationFlag);
        }
    } else {
        for (const CGDirectDisplayID displayID : onlineBefore) {
            burst.emplace_back(displayID, kCGDisplayBeginConfigurationFlag);
        }
    }
    burst.insert(burst.end(), ends.begin(), ends.end());
    bursts_.push_back(std::move(burst));
    changed_.notify_all();
}

void SimulatorState::connect(SimulatedDisplay display) {
    const auto before = activeIDs();
    const bool firstDisplay = displays_.empty();
    if (firstDisplay) {
        display.main = true;
    } else if (display.main) {
        for (SimulatedDisplay& other : displays_) {
            other.main = false;
        }
    }
    const CGDirectDisplayID displayID = display.displayID;
    CGDisplayChangeSummaryFlags flags = kCGDisplayAddFlag | kCGDisplayDesktopShapeChangedFlag;
    if (display.main) {
        flags |= kCGDisplaySetMainFlag;
    }
    displays_.push_back(std::move(display));
    queueBurst(before, {{displayID, flags}});
}

void SimulatorState::disconnect(CGDirectDisplayID displayID) {
    const auto before = activeIDs();
    const auto found = std::find_if(displays_.begin(), displays_.end(), [&](const SimulatedDisplay& display) {
        return display.displayID == displayID;
    });
    const bool wasMain = found->main;
    displays_.erase(found);
    std::vector<CallbackCall> ends{{displayID, kCGDisplayRemoveFlag | kCGDisplayDesktopShapeChangedFlag}};
    for (SimulatedDisplay& other : displays_) {
        if (other.mirrorSource == displayID) {
            other.mirrorSource = 0;
            ends.emplace_back(other.displayID, kCGDisplayUnMirrorFlag);
        }
    }
    if (wasMain && !displays_.empty()) {
        displays_.front().main = true;
        ends.emplace_back(displays_.front().displayID, kCGDisplaySetMainFlag);
    }
    queueBurst(before, ends);
}

std::optional<std::size_t> SimulatorState::modeIndex(const SimulatedDisplay& display,
                                                     const SimulatedMode& mode) const {
    const auto found = std::find(display.modes.begin(), display.modes.end(), mode);
    if (found == display.modes.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - display.modes.begin());
}

void SimulatorState::deliverCallbacks() {
    Lock lock{mutex_};
    for (;;) {
        changed_.wait(lock, [&] { return stopping_ || !bursts_.empty(); });
        if (stopping_) {
            return;
        }
        std::vector<CallbackCall> burst = std::move(bursts_.front());
        bursts_.pop_front();
        delivering_ = true;
        for (const auto& [displayID, flags] : burst) {
            // Callbacks run without the lock, so they may call back into the window server; the
            // list is read afresh for every call, so a removed callback is not called again.
            const std::vector<RegisteredCallback> registered = callbacks_;
            lock.unlock();
            for (const RegisteredCallback& entry : registered) {
                entry.callback(displayID, flags, entry.userInfo);
            }
            lock.lock();
        }
        delivering_ = false;
        changed_.notify_all();
    }
}

// ---------------------------------------------------------------- CoreGraphics

CGError SimulatorState::getActiveDisplayList(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                                             uint32_t* displayCount) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics, fmt::format("CGGetActiveDisplayList(maxDisplays={}, activeDisplays={})",
                                                 maxDisplays, activeDisplays != nullptr ? "buffer" : "NULL"));
    if (const auto failure = takeFailure("CGGetActiveDisplayList")) {
        return *failure;
    }
    if (displayCount == nullptr) {
        return kCGErrorIllegalArgument;
    }
    const auto ids = activeIDs();
    if (activeDisplays == nullptr) {
        *displayCount = static_cast<uint32_t>(ids.size());
        return kCGErrorSuccess;
    }
    const auto filled = std::min<std::size_t>(maxDisplays, ids.size());
    std::copy_n(ids.begin(), filled, activeDisplays);
    *displayCount = static_cast<uint32_t>(filled);
    return kCGErrorSuccess;
}

template <class Result, class Read>
Result SimulatorState::readDisplay(std::string_view function, CGDirectDisplayID display, Result fallback,
                                   Read read) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics, fmt::format("{}(display={})", function, display));
    const SimulatedDisplay* const found = findDisplay(display);
    return found != nullptr ? read(*found) : fallback;
}

uint32_t SimulatorState::vendorNumber(CGDirectDisplayID display) {
    return readDisplay("CGDisplayVendorNumber", display, uint32_t{0},
                       [](const SimulatedDisplay& found) { return found.vendorNumber; });
}

uint32_t SimulatorState::modelNumber(CGDirectDisplayID display) {
    return readDisplay("CGDisplayModelNumber", display, uint32_t{0},
                       [](const SimulatedDisplay& found) { return found.modelNumber; });
}

uint32_t SimulatorState::serialNumber(CGDirectDisplayID display) {
    return readDisplay("CGDisplaySerialNumber", display, uint32_t{0},
                       [](const SimulatedDisplay& found) { return found.serialNumber; });
}

boolean_t SimulatorState::isBuiltin(CGDirectDisplayID display) {
    return readDisplay("CGDisplayIsBuiltin", display, boolean_t{0},
                       [](const SimulatedDisplay& found) { return boolean_t{found.builtin}; });
}

boolean_t SimulatorState::isMain(CGDirectDisplayID display) {
    return readDisplay("CGDisplayIsMain", display, boolean_t{0},
                       [](const SimulatedDisplay& found) { return boolean_t{found.main}; });
}

boolean_t SimulatorState::isAsleep(CGDirectDisplayID display) {
    return readDisplay("CGDisplayIsAsleep", display, boolean_t{0},
                       [](const SimulatedDisplay& found) { return boolean_t{found.asleep}; });
}

CGDirectDisplayID SimulatorState::mirrorsDisplay(CGDirectDisplayID display) {
    return readDisplay("CGDisplayMirrorsDisplay", display, CGDirectDisplayID{0},
                       [](const SimulatedDisplay& found) { return found.mirrorSource; });
}

// Despite their names, the real calls answer the current mode's size in points: a HiDPI mode of
// 3840x2160 pixels reads 1920x1080 here, as it does on a Mac.
size_t SimulatorState::pixelsWide(CGDirectDisplayID display) {
    return readDisplay("CGDisplayPixelsWide", display, size_t{0}, [](const SimulatedDisplay& found) {
        return found.currentMode ? found.modes[*found.currentMode].pointWidth : 0;
    });
}

size_t SimulatorState::pixelsHigh(CGDirectDisplayID display) {
    return readDisplay("CGDisplayPixelsHigh", display, size_t{0}, [](const SimulatedDisplay& found) {
        return found.currentMode ? found.modes[*found.currentMode].pointHeight : 0;
    });
}

CGRect SimulatorState::bounds(CGDirectDisplayID display) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics, fmt::format("CGDisplayBounds(display={})", display));
    const SimulatedDisplay* const found = findDisplay(display);
    if (found == nullptr) {
        return CGRect{{0, 0}, {0, 0}};
    }
    CGSize size{0, 0};
    if (found->currentMode) {
        const SimulatedMode& mode = found->modes[*found->currentMode];
        size = CGSize{static_cast<CGFloat>(mode.pointWidth), static_cast<CGFloat>(mode.pointHeight)};
    }
    return CGRect{found->origin, size};
}

CGDisplayModeRef SimulatorState::copyDisplayMode(CGDirectDisplayID display) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics, fmt::format("CGDisplayCopyDisplayMode(display={})", display));
    const SimulatedDisplay* const found = findDisplay(display);
    if (takeFailure("CGDisplayCopyDisplayMode") || found == nullptr || !found->currentMode) {
        return nullptr;
    }
    return reinterpret_cast<CGDisplayModeRef>(newMode(found->modes[*found->currentMode], display));
}

CFArrayRef SimulatorState::copyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef options) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics,
           fmt::format("CGDisplayCopyAllDisplayModes(display={}, options={})", display, describe(options)));
    const SimulatedDisplay* const found = findDisplay(display);
    if (takeFailure("CGDisplayCopyAllDisplayModes") || found == nullptr ||
        found->modeListAnswer == ModeListAnswer::none) {
        return nullptr;
    }
    bool withDuplicates = false;
    if (options != nullptr) {
        if (const SimObject* const dictionary =
                lookUpKind(options, ObjectKind::dictionary, "CGDisplayCopyAllDisplayModes")) {
            for (std::size_t index = 0; index < dictionary->elements.size(); ++index) {
                const SimObject* const key = lookUp(dictionary->elements[index]);
                if (key != nullptr && key->kind == ObjectKind::string &&
                    key->text == "kCGDisplayShowDuplicateLowResolutionModes" &&
                    dictionary->values[index] == trueValue_) {
                    withDuplicates = true;
                }
            }
        }
    }
    if (found->modeListAnswer == ModeListAnswer::notAnArray) {
        return reinterpret_cast<CFArrayRef>(newString("not an array of modes"));
    }
    SimObject* const array = newObject(ObjectKind::array, nullptr);
    array->retainsElements = true;
    if (found->modeListAnswer == ModeListAnswer::emptyArray) {
        return reinterpret_cast<CFArrayRef>(array);
    }
    for (const SimulatedMode& mode : found->modes) {
        if (mode.lowResolutionDuplicate && !withDuplicates) {
            continue;
        }
        SimObject* const element = found->modeListAnswer == ModeListAnswer::arrayOfNonModes
                                       ? newString(describeMode(mode))
                                       : newMode(mode, display);
        array->elements.push_back(element);
    }
    return reinterpret_cast<CFArrayRef>(array);
}

template <class Result, class Read>
Result SimulatorState::readMode(std::string_view function, CGDisplayModeRef mode, Result fallback,
                                Read read) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, fmt::format("{}(mode={})", function, describe(mode)));
    const SimObject* const object = lookUpKind(mode, ObjectKind::displayMode, function);
    return object != nullptr ? read(object->mode) : fallback;
}

size_t SimulatorState::modePixelWidth(CGDisplayModeRef mode) {
    return readMode("CGDisplayModeGetPixelWidth", mode, size_t{0},
                    [](const SimulatedMode& found) { return found.pixelWidth; });
}

size_t SimulatorState::modePixelHeight(CGDisplayModeRef mode) {
    return readMode("CGDisplayModeGetPixelHeight", mode, size_t{0},
                    [](const SimulatedMode& found) { return found.pixelHeight; });
}

size_t SimulatorState::modeWidth(CGDisplayModeRef mode) {
    return readMode("CGDisplayModeGetWidth", mode, size_t{0},
                    [](const SimulatedMode& found) { return found.pointWidth; });
}

size_t SimulatorState::modeHeight(CGDisplayModeRef mode) {
    return readMode("CGDisplayModeGetHeight", mode, size_t{0},
                    [](const SimulatedMode& found) { return found.pointHeight; });
}

double SimulatorState::modeRefreshRate(CGDisplayModeRef mode) {
    return readMode("CGDisplayModeGetRefreshRate", mode, 0.0,
                    [](const SimulatedMode& found) { return found.refreshRate; });
}

CFTypeID SimulatorState::modeTypeID() {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, "CGDisplayModeGetTypeID()");
    return cf_displayModeTypeID;
}

CGDisplayModeRef SimulatorState::modeRetain(CGDisplayModeRef mode) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, fmt::format("CGDisplayModeRetain(mode={})", describe(mode)));
    if (mode != nullptr) {
        if (SimObject* const object = lookUpKind(mode, ObjectKind::displayMode, "CGDisplayModeRetain")) {
            retainObject(object);
        }
    }
    return mode;
}

void SimulatorState::modeRelease(CGDisplayModeRef mode) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, fmt::format("CGDisplayModeRelease(mode={})", describe(mode)));
    if (mode != nullptr) {
        if (SimObject* const object = lookUpKind(mode, ObjectKind::displayMode, "CGDisplayModeRelease")) {
            releaseObject(object);
        }
    }
}

CGError SimulatorState::setDisplayMode(CGDirectDisplayID display, CGDisplayModeRef mode,
                                       CFDictionaryRef options) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::coreGraphics, fmt::format("CGDisplaySetDisplayMode(display={}, mode={}, options={})",
                                                 display, describe(mode), describe(options)));
    if (const auto failure = takeFailure("CGDisplaySetDisplayMode")) {
        return *failure;
    }
    SimulatedDisplay* const found = findDisplay(display);
    const SimObject* const object = lookUpKind(mode, ObjectKind::displayMode, "CGDisplaySetDisplayMode");
    if (found == nullptr || object == nullptr || object->modeDisplay != display) {
        return kCGErrorIllegalArgument;
    }
    const auto index = modeIndex(*found, object->mode);
    if (!index) {
        return kCGErrorIllegalArgument;
    }
    if (!found->acceptsModeSwitch) {
        return kCGErrorCannotComplete;
    }
    const auto before = activeIDs();
    found->currentMode = index;
    queueBurst(before, {{display, kCGDisplaySetModeFlag | kCGDisplayDesktopShapeChangedFlag}});
    return kCGErrorSuccess;
}

CGError SimulatorState::beginConfiguration(CGDisplayConfigRef* config) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, "CGBeginDisplayConfiguration()");
    if (const auto failure = takeFailure("CGBeginDisplayConfiguration")) {
        return *failure;
    }
    if (config == nullptr) {
        return kCGErrorIllegalArgument;
    }
    const std::uintptr_t handle = nextConfiguration_++;
    configurations_[handle] = {};
    *config = reinterpret_cast<CGDisplayConfigRef>(handle);
    return kCGErrorSuccess;
}

CGError SimulatorState::configureMirror(CGDisplayConfigRef config, CGDirectDisplayID display,
                                        CGDirectDisplayID master) {
    Lock lock{mutex_};
    const auto handle = reinterpret_cast<std::uintptr_t>(config);
    record(CallFamily::coreGraphics,
           fmt::format("CGConfigureDisplayMirrorOfDisplay(config={}, display={}, master={})", handle, display,
                       master));
    if (const auto failure = takeFailure("CGConfigureDisplayMirrorOfDisplay")) {
        return *failure;
    }
    const auto open = configurations_.find(handle);
    if (open == configurations_.end() || findDisplay(display) == nullptr ||
        (master != 0 && findDisplay(master) == nullptr)) {
        return kCGErrorIllegalArgument;
    }
    open->second.push_back(
        StagedChange{.kind = StagedChange::Kind::mirror, .display = display, .master = master});
    return kCGErrorSuccess;
}

CGError SimulatorState::configureMode(CGDisplayConfigRef config, CGDirectDisplayID display,
                                      CGDisplayModeRef mode, CFDictionaryRef options) {
    Lock lock{mutex_};
    const auto handle = reinterpret_cast<std::uintptr_t>(config);
    record(CallFamily::coreGraphics,
           fmt::format("CGConfigureDisplayWithDisplayMode(config={}, display={}, mode={}, options={})",
                       handle, display, describe(mode), describe(options)));
    if (const auto failure = takeFailure("CGConfigureDisplayWithDisplayMode")) {
        return *failure;
    }
    const auto open = configurations_.find(handle);
    const SimulatedDisplay* const found = findDisplay(display);
    const SimObject* const object =
        lookUpKind(mode, ObjectKind::displayMode, "CGConfigureDisplayWithDisplayMode");
    if (open == configurations_.end() || found == nullptr || object == nullptr ||
        object->modeDisplay != display || !modeIndex(*found, object->mode)) {
        return kCGErrorIllegalArgument;
    }
    open->second.push_back(
        StagedChange{.kind = StagedChange::Kind::mode, .display = display, .mode = object->mode});
    return kCGErrorSuccess;
}

CGError SimulatorState::configureOrigin(CGDisplayConfigRef config, CGDirectDisplayID display, int32_t x,
                                        int32_t y) {
    Lock lock{mutex_};
    const auto handle = reinterpret_cast<std::uintptr_t>(config);
    record(CallFamily::coreGraphics,
           fmt::format("CGConfigureDisplayOrigin(config={}, display={}, x={}, y={})", handle, display, x, y));
    if (const auto failure = takeFailure("CGConfigureDisplayOrigin")) {
        return *failure;
    }
    const auto open = configurations_.find(handle);
    if (open == configurations_.end() || findDisplay(display) == nullptr) {
        return kCGErrorIllegalArgument;
    }
    open->second.push_back(
        StagedChange{.kind = StagedChange::Kind::origin, .display = display, .x = x, .y = y});
    return kCGErrorSuccess;
}

CGError SimulatorState::completeConfiguration(CGDisplayConfigRef config, CGConfigureOption option) {
    Lock lock{mutex_};
    bringInDueDisplays();
    const auto handle = reinterpret_cast<std::uintptr_t>(config);
    record(CallFamily::coreGraphics,
           fmt::format("CGCompleteDisplayConfiguration(config={}, option={})", handle, optionName(option)));
    // A failed completion leaves the configuration open, so that the caller can still cancel it.
    if (const auto failure = takeFailure("CGCompleteDisplayConfiguration")) {
        return *failure;
    }
    const auto open = configurations_.find(handle);
    if (open == configurations_.end()) {
        return kCGErrorIllegalArgument;
    }
    const std::vector<StagedChange> changes = open->second;
    for (const StagedChange& change : changes) {
        if (findDisplay(change.display) == nullptr) {
            return kCGErrorIllegalArgument;
        }
        if (change.kind == StagedChange::Kind::mode && !findDisplay(change.display)->acceptsModeSwitch) {
            return kCGErrorCannotComplete;
        }
    }
    configurations_.erase(open);

    const auto before = activeIDs();
    std::vector<CallbackCall> ends;
    const auto flag = [&](CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
        const auto entry = std::find_if(ends.begin(), ends.end(),
                                        [&](const CallbackCall& call) { return call.first == display; });
        if (entry != ends.end()) {
            entry->second |= flags;
        } else {
            ends.emplace_back(display, flags);
        }
    };
    for (const StagedChange& change : changes) {
        SimulatedDisplay& display = *findDisplay(change.display);
        switch (change.kind) {
            case StagedChange::Kind::mirror:
                if (display.mirrorSource != change.master) {
                    display.mirrorSource = change.master;
                    flag(change.display, change.master != 0 ? kCGDisplayMirrorFlag : kCGDisplayUnMirrorFlag);
                }
                break;
            case StagedChange::Kind::mode:
                if (display.currentMode != modeIndex(display, change.mode)) {
                    display.currentMode = modeIndex(display, change.mode);
                    flag(change.display, kCGDisplaySetModeFlag | kCGDisplayDesktopShapeChangedFlag);
                }
                break;
            case StagedChange::Kind::origin: {
                const CGPoint origin{static_cast<CGFloat>(change.x), static_cast<CGFloat>(change.y)};
                if (display.origin.x != origin.x || display.origin.y != origin.y) {
                    display.origin = origin;
                    flag(change.display, kCGDisplayMovedFlag | kCGDisplayDesktopShapeChangedFlag);
                }
                break;
            }
        }
    }
    queueBurst(before, ends);
    return kCGErrorSuccess;
}

CGError SimulatorState::cancelConfiguration(CGDisplayConfigRef config) {
    Lock lock{mutex_};
    const auto handle = reinterpret_cast<std::uintptr_t>(config);
    record(CallFamily::coreGraphics, fmt::format("CGCancelDisplayConfiguration(config={})", handle));
    if (const auto failure = takeFailure("CGCancelDisplayConfiguration")) {
        return *failure;
    }
    return configurations_.erase(handle) == 1 ? kCGErrorSuccess : kCGErrorIllegalArgument;
}

CGError SimulatorState::registerCallback(CGDisplayReconfigurationCallBack callback, void* userInfo) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, "CGDisplayRegisterReconfigurationCallback()");
    if (const auto failure = takeFailure("CGDisplayRegisterReconfigurationCallback")) {
        return *failure;
    }
    if (callback == nullptr) {
        return kCGErrorIllegalArgument;
    }
    callbacks_.push_back(RegisteredCallback{callback, userInfo});
    return kCGErrorSuccess;
}

CGError SimulatorState::removeCallback(CGDisplayReconfigurationCallBack callback, void* userInfo) {
    Lock lock{mutex_};
    record(CallFamily::coreGraphics, "CGDisplayRemoveReconfigurationCallback()");
    if (const auto failure = takeFailure("CGDisplayRemoveReconfigurationCallback")) {
        return *failure;
    }
    const auto removed = std::erase_if(callbacks_, [&](const RegisteredCallback& entry) {
        return entry.callback == callback && entry.userInfo == userInfo;
    });
    // Once removal returns, the callback is not running and will not run: its owner may go away.
    if (std::this_thread::get_id() != callbackThread_.get_id()) {
        changed_.wait(lock, [&] { return !delivering_; });
    }
    return removed > 0 ? kCGErrorSuccess : kCGErrorIllegalArgument;
}

CFUUIDRef SimulatorState::createUUID(uint32_t displayID) {
    Lock lock{mutex_};
    bringInDueDisplays();
    record(CallFamily::colorSync, fmt::format("CGDisplayCreateUUIDFromDisplayID(displayID={})", displayID));
    const SimulatedDisplay* const found = findDisplay(displayID);
    if (takeFailure("CGDisplayCreateUUIDFromDisplayID") || found == nullptr || !found->colorSyncUUID) {
        return nullptr;
    }
    SimObject* const uuid = newObject(ObjectKind::uuid, nullptr);
    uuid->text = canonicalUUID(*found->colorSyncUUID);
    return reinterpret_cast<CFUUIDRef>(uuid);
}

// ---------------------------------------------------------------- CoreFoundation

CFTypeID SimulatorState::getTypeID(CFTypeRef value) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFGetTypeID({})", describe(value)));
    const SimObject* const object = lookUp(value);
    if (object == nullptr) {
        violation(fmt::format("CFGetTypeID was given {}", describe(value)));
        return 0;
    }
    switch (object->kind) {
        case ObjectKind::string:
            return cf_stringTypeID;
        case ObjectKind::array:
            return cf_arrayTypeID;
        case ObjectKind::dictionary:
            return cf_dictionaryTypeID;
        case ObjectKind::boolean:
            return cf_booleanTypeID;
        case ObjectKind::uuid:
            return cf_uuidTypeID;
        case ObjectKind::displayMode:
            return cf_displayModeTypeID;
        case ObjectKind::instance:
            return cf_objectTypeID;
    }
    return 0;
}

CFTypeRef SimulatorState::retain(CFTypeRef value) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFRetain({})", describe(value)));
    SimObject* const object = lookUp(value);
    if (object == nullptr) {
        violation(fmt::format("CFRetain was given {}", describe(value)));
        return value;
    }
    retainObject(object);
    return value;
}

void SimulatorState::release(CFTypeRef value) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFRelease({})", describe(value)));
    SimObject* const object = lookUp(value);
    if (object == nullptr) {
        violation(fmt::format("CFRelease was given {}", describe(value)));
        return;
    }
    releaseObject(object);
}

CFTypeID SimulatorState::arrayTypeID() {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, "CFArrayGetTypeID()");
    return cf_arrayTypeID;
}

CFArrayRef SimulatorState::arrayCreate(const void** values, CFIndex count,
                                       const CFArrayCallBacks* callBacks) {
    Lock lock{mutex_};
    const bool retainsValues = callBacks == &kSimulatedArrayCallBacks;
    record(CallFamily::coreFoundation,
           fmt::format("CFArrayCreate(count={}, callBacks={})", count,
                       retainsValues ? "kCFTypeArrayCallBacks" : describe(callBacks)));
    if (callBacks != nullptr && !retainsValues) {
        violation("CFArrayCreate was given call-backs other than kCFTypeArrayCallBacks");
    }
    SimObject* const array = newObject(ObjectKind::array, nullptr);
    array->retainsElements = retainsValues;
    for (CFIndex index = 0; index < count; ++index) {
        const void* const value = values[index];
        if (retainsValues) {
            SimObject* const element = lookUp(value);
            if (element == nullptr) {
                violation(fmt::format("CFArrayCreate was given {} to retain", describe(value)));
                continue;
            }
            retainObject(element);
        }
        array->elements.push_back(value);
    }
    return reinterpret_cast<CFArrayRef>(array);
}

CFIndex SimulatorState::arrayCount(CFArrayRef array) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFArrayGetCount({})", describe(array)));
    const SimObject* const object = lookUpKind(array, ObjectKind::array, "CFArrayGetCount");
    return object != nullptr ? static_cast<CFIndex>(object->elements.size()) : 0;
}

const void* SimulatorState::arrayValue(CFArrayRef array, CFIndex index) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFArrayGetValueAtIndex({}, {})", describe(array), index));
    const SimObject* const object = lookUpKind(array, ObjectKind::array, "CFArrayGetValueAtIndex");
    if (object == nullptr) {
        return nullptr;
    }
    if (index < 0 || static_cast<std::size_t>(index) >= object->elements.size()) {
        violation(fmt::format("CFArrayGetValueAtIndex was given index {} of {} values", index,
                              object->elements.size()));
        return nullptr;
    }
    return object->elements[static_cast<std::size_t>(index)];
}

CFDictionaryRef SimulatorState::dictionaryCreate(const void** keys, const void** values, CFIndex count,
                                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks) {
    Lock lock{mutex_};
    const bool retains = keyCallBacks == &kSimulatedDictionaryKeyCallBacks &&
                         valueCallBacks == &kSimulatedDictionaryValueCallBacks;
    record(CallFamily::coreFoundation,
           fmt::format("CFDictionaryCreate(count={}, callBacks={})", count,
                       retains ? "kCFTypeDictionaryKeyCallBacks, kCFTypeDictionaryValueCallBacks" : "other"));
    if (!retains) {
        violation("CFDictionaryCreate was given call-backs other than the CFType ones");
    }
    SimObject* const dictionary = newObject(ObjectKind::dictionary, nullptr);
    dictionary->retainsElements = retains;
    for (CFIndex index = 0; index < count; ++index) {
        SimObject* const key = lookUp(keys[index]);
        SimObject* const value = lookUp(values[index]);
        if (key == nullptr || value == nullptr) {
            violation("CFDictionaryCreate was given a key or value that is not an object");
            continue;
        }
        if (retains) {
            retainObject(key);
            retainObject(value);
        }
        dictionary->elements.push_back(keys[index]);
        dictionary->values.push_back(values[index]);
    }
    return reinterpret_cast<CFDictionaryRef>(dictionary);
}

CFStringRef SimulatorState::uuidCreateString(CFUUIDRef uuid) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFUUIDCreateString({})", describe(uuid)));
    const SimObject* const object = lookUpKind(uuid, ObjectKind::uuid, "CFUUIDCreateString");
    if (takeFailure("CFUUIDCreateString") || object == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<CFStringRef>(newString(object->text));
}

CFStringRef SimulatorState::stringCreateWithBytes(const UInt8* bytes, CFIndex count,
                                                  CFStringEncoding encoding) {
    Lock lock{mutex_};
    const std::string text{reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)};
    record(CallFamily::coreFoundation,
           fmt::format("CFStringCreateWithBytes(\"{}\", encoding={})", text, encodingName(encoding)));
    if (takeFailure("CFStringCreateWithBytes") || !isValidUTF8(text) ||
        (encoding != kCFStringEncodingUTF8 && encoding != kCFStringEncodingASCII)) {
        return nullptr;
    }
    return reinterpret_cast<CFStringRef>(newString(text));
}

CFStringRef SimulatorState::stringCreateWithCString(const char* text, CFStringEncoding encoding) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation,
           fmt::format("CFStringCreateWithCString(\"{}\", encoding={})", text, encodingName(encoding)));
    if (takeFailure("CFStringCreateWithCString") || !isValidUTF8(text) ||
        (encoding != kCFStringEncodingUTF8 && encoding != kCFStringEncodingASCII)) {
        return nullptr;
    }
    return reinterpret_cast<CFStringRef>(newString(text));
}

Boolean SimulatorState::stringGetCString(CFStringRef string, char* buffer, CFIndex size,
                                         CFStringEncoding encoding) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFStringGetCString({}, bufferSize={}, encoding={})",
                                                   describe(string), size, encodingName(encoding)));
    const SimObject* const object = lookUpKind(string, ObjectKind::string, "CFStringGetCString");
    if (object == nullptr || encoding != kCFStringEncodingUTF8 || size < 0 ||
        object->text.size() + 1 > static_cast<std::size_t>(size)) {
        return 0;
    }
    std::memcpy(buffer, object->text.c_str(), object->text.size() + 1);
    return 1;
}

CFIndex SimulatorState::stringLength(CFStringRef string) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation, fmt::format("CFStringGetLength({})", describe(string)));
    const SimObject* const object = lookUpKind(string, ObjectKind::string, "CFStringGetLength");
    return object != nullptr ? utf16Length(object->text) : 0;
}

CFIndex SimulatorState::stringMaximumSize(CFIndex length, CFStringEncoding encoding) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation,
           fmt::format("CFStringGetMaximumSizeForEncoding({}, encoding={})", length, encodingName(encoding)));
    // Three UTF-8 bytes per UTF-16 code unit at most (a surrogate pair is two units for four bytes).
    return encoding == kCFStringEncodingUTF8 ? length * 3 : length;
}

const char* SimulatorState::stringCStringPointer(CFStringRef string, CFStringEncoding encoding) {
    Lock lock{mutex_};
    record(CallFamily::coreFoundation,
           fmt::format("CFStringGetCStringPtr({}, encoding={})", describe(string), encodingName(encoding)));
    // CoreFoundation may answer NULL at any time; answering it always keeps callers on the path that
    // works everywhere.
    return nullptr;
}

// ---------------------------------------------------------------- dispatch

dispatch_queue_global_t SimulatorState::globalQueue(intptr_t identifier, uintptr_t flags) {
    Lock lock{mutex_};
    std::string name = std::to_string(identifier);
    std::optional<std::size_t> index;
    for (std::size_t candidate = 0; candidate < std::size(qualityOfServiceClasses); ++candidate) {
        if (qualityOfServiceClasses[candidate].first == identifier) {
            index = candidate;
            name = qualityOfServiceClasses[candidate].second;
        }
    }
    record(CallFamily::dispatch,
           fmt::format("dispatch_get_global_queue(identifier={}, flags={})", name, flags));
    if (takeFailure("dispatch_get_global_queue") || !index || flags != 0) {
        return nullptr;
    }
    return reinterpret_cast<dispatch_queue_global_t>(&globalQueueStorage[*index]);
}

std::optional<std::string> globalQueueName(const void* queue) {
    for (std::size_t index = 0; index < std::size(qualityOfServiceClasses); ++index) {
        if (queue == &globalQueueStorage[index]) {
            return std::string{qualityOfServiceClasses[index].second};
        }
    }
    return std::nullopt;
}

}  // namespace screenweaver::simulation
