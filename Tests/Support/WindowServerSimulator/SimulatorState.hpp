#pragma once

// The simulator's inside: shared by the files that implement its C functions, its Objective-C
// runtime and its test-facing interface. Not for tests.

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "Platform/PlatformAPI.hpp"
#include "WindowServerSimulator/SimulatedDisplay.hpp"
#include "WindowServerSimulator/VirtualDisplayScript.hpp"
#include "WindowServerSimulator/WindowServerSimulator.hpp"

namespace screenweaver::simulation {

enum class ObjectKind { string, array, dictionary, boolean, uuid, displayMode, instance };

enum class PrivateKind { plain, descriptor, mode, settings, display };

struct SimClass {
    std::string name;
    PrivateKind kind = PrivateKind::plain;
    bool isMeta = false;
    SimClass* metaclass = nullptr;      // of an ordinary class
    SimClass* instanceClass = nullptr;  // of a metaclass
    bool registered = true;
    std::map<SEL, IMP> methods;
};

/// One CoreFoundation value or Objective-C object. Every pointer handed out is the address of one
/// of these, and every pointer received is looked up before use, so misuse is reported, not crashed on.
struct SimObject {
    ObjectKind kind = ObjectKind::instance;
    std::uint64_t creation = 0;  // order of creation, for stable reports
    SimClass* isa = nullptr;
    long retainCount = 1;
    bool immortal = false;
    std::string text;                   // string, uuid
    std::vector<const void*> elements;  // array values, dictionary keys
    std::vector<const void*> values;    // dictionary values
    bool retainsElements = false;
    SimulatedMode mode;  // displayMode
    CGDirectDisplayID modeDisplay = 0;
    // Instances of the private classes.
    bool initialised = false;
    DescriptorValues descriptor;
    ModeValues modeValues;
    SettingsValues settings;
    CGDirectDisplayID displayID = 0;
    std::optional<std::size_t> recordIndex;
    bool displayCreated = false;
};

struct StagedChange {
    enum class Kind { mirror, mode, origin } kind = Kind::mirror;
    CGDirectDisplayID display = 0;
    CGDirectDisplayID master = 0;
    SimulatedMode mode{};
    std::int32_t x = 0;
    std::int32_t y = 0;
};

struct RegisteredCallback {
    CGDisplayReconfigurationCallBack callback;
    void* userInfo;
};

using CallbackCall = std::pair<CGDirectDisplayID, CGDisplayChangeSummaryFlags>;

// The simulator's kCFTypeArrayCallBacks and kCFTypeDictionaryKey/ValueCallBacks: containers made with
// them retain their contents.
extern const CFArrayCallBacks kSimulatedArrayCallBacks;
extern const CFDictionaryKeyCallBacks kSimulatedDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kSimulatedDictionaryValueCallBacks;

// The simulator's tables; the constants among their entries are objects of the live simulator.
platform::CoreGraphicsAPI simulatedCoreGraphics(CFStringRef duplicateModesKey);
platform::ColorSyncAPI simulatedColorSync();
platform::CoreFoundationAPI simulatedCoreFoundation(CFBooleanRef trueValue);
platform::ObjCRuntimeAPI simulatedObjCRuntime();
platform::DispatchAPI simulatedDispatch();

// The quality-of-service class of a global queue the simulator handed out, or absent.
std::optional<std::string> globalQueueName(const void* queue);

class SimulatorState {
public:
    explicit SimulatorState(const Clock& clock);
    ~SimulatorState();

    /// The one live simulator; stops the process when there is none.
    static SimulatorState& active();

    // ---- Test-facing (see WindowServerSimulator).
    platform::PlatformAPI platform() const;
    void setProcessFacts(platform::ProcessFacts facts);
    void addDisplay(SimulatedDisplay display);
    void removeDisplay(CGDirectDisplayID displayID);
    void addDisplayLater(SimulatedDisplay display, Clock::Duration delay);
    void removeDisplayLater(CGDirectDisplayID displayID, Clock::Duration delay);
    void moveDisplay(CGDirectDisplayID displayID, CGPoint origin);
    void setCurrentMode(CGDirectDisplayID displayID, std::size_t modeIndex);
    void setMirrorSource(CGDirectDisplayID displayID, CGDirectDisplayID source);
    void editDisplayQuietly(CGDirectDisplayID displayID, const std::function<void(SimulatedDisplay&)>& edit);
    std::optional<SimulatedDisplay> display(CGDirectDisplayID displayID) const;
    std::vector<CGDirectDisplayID> activeDisplayIDs() const;
    void failCalls(std::string_view function, Failure failure);
    void clearFailures();
    void waitForCallbacks();
    std::size_t registeredCallbackCount() const;
    void removeClass(std::string_view className);
    void removeSelector(std::string_view className, std::string_view selector);
    void setVirtualDisplayScript(VirtualDisplayScript script);
    std::vector<VirtualDisplayRecord> virtualDisplays() const;
    std::size_t descriptorAttempts() const;
    std::vector<std::string> calls(std::optional<CallFamily> family) const;
    void clearCalls();
    std::vector<std::string> hygieneProblems() const;

    // ---- CoreGraphics and ColorSync.
    CGError getActiveDisplayList(uint32_t maxDisplays, CGDirectDisplayID* activeDisplays,
                                 uint32_t* displayCount);
    uint32_t vendorNumber(CGDirectDisplayID display);
    uint32_t modelNumber(CGDirectDisplayID display);
    uint32_t serialNumber(CGDirectDisplayID display);
    boolean_t isBuiltin(CGDirectDisplayID display);
    boolean_t isMain(CGDirectDisplayID display);
    boolean_t isAsleep(CGDirectDisplayID display);
    CGRect bounds(CGDirectDisplayID display);
    CGDirectDisplayID mirrorsDisplay(CGDirectDisplayID display);
    size_t pixelsWide(CGDirectDisplayID display);
    size_t pixelsHigh(CGDirectDisplayID display);
    CGDisplayModeRef copyDisplayMode(CGDirectDisplayID display);
    CFArrayRef copyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef options);
    size_t modePixelWidth(CGDisplayModeRef mode);
    size_t modePixelHeight(CGDisplayModeRef mode);
    size_t modeWidth(CGDisplayModeRef mode);
    size_t modeHeight(CGDisplayModeRef mode);
    double modeRefreshRate(CGDisplayModeRef mode);
    CFTypeID modeTypeID();
    CGDisplayModeRef modeRetain(CGDisplayModeRef mode);
    void modeRelease(CGDisplayModeRef mode);
    CGError setDisplayMode(CGDirectDisplayID display, CGDisplayModeRef mode, CFDictionaryRef options);
    CGError beginConfiguration(CGDisplayConfigRef* config);
    CGError configureMirror(CGDisplayConfigRef config, CGDirectDisplayID display, CGDirectDisplayID master);
    CGError configureMode(CGDisplayConfigRef config, CGDirectDisplayID display, CGDisplayModeRef mode,
                          CFDictionaryRef options);
    CGError configureOrigin(CGDisplayConfigRef config, CGDirectDisplayID display, int32_t x, int32_t y);
    CGError completeConfiguration(CGDisplayConfigRef config, CGConfigureOption option);
    CGError cancelConfiguration(CGDisplayConfigRef config);
    CGError registerCallback(CGDisplayReconfigurationCallBack callback, void* userInfo);
    CGError removeCallback(CGDisplayReconfigurationCallBack callback, void* userInfo);
    CFUUIDRef createUUID(uint32_t displayID);

    // ---- CoreFoundation.
    CFTypeID getTypeID(CFTypeRef value);
    CFTypeRef retain(CFTypeRef value);
    void release(CFTypeRef value);
    CFTypeID arrayTypeID();
    CFArrayRef arrayCreate(const void** values, CFIndex count, const CFArrayCallBacks* callBacks);
    CFIndex arrayCount(CFArrayRef array);
    const void* arrayValue(CFArrayRef array, CFIndex index);
    CFDictionaryRef dictionaryCreate(const void** keys, const void** values, CFIndex count,
                                     const CFDictionaryKeyCallBacks* keyCallBacks,
                                     const CFDictionaryValueCallBacks* valueCallBacks);
    CFStringRef uuidCreateString(CFUUIDRef uuid);
    CFStringRef stringCreateWithBytes(const UInt8* bytes, CFIndex count, CFStringEncoding encoding);
    CFStringRef stringCreateWithCString(const char* text, CFStringEncoding encoding);
    Boolean stringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);
    CFIndex stringLength(CFStringRef string);
    CFIndex stringMaximumSize(CFIndex length, CFStringEncoding encoding);
    const char* stringCStringPointer(CFStringRef string, CFStringEncoding encoding);
    CFBooleanRef booleanTrue() const { return reinterpret_cast<CFBooleanRef>(trueValue_); }
    CFStringRef duplicateModesKey() const { return reinterpret_cast<CFStringRef>(duplicateModesKey_); }

    // ---- Objective-C runtime.
    Class lookUpClass(const char* name, const char* function);
    SEL registerSelector(const char* name);
    const char* selectorName(SEL selector);
    BOOL classRespondsToSelector(Class cls, SEL selector);
    IMP methodImplementation(Class cls, SEL selector);
    Class objectClass(id object);
    const char* className(Class cls);
    void* poolPush();
    void poolPop(void* pool);

    // ---- Methods of the simulated classes (reached through their implementations).
    id alloc(id cls, SEL selector);
    BOOL instancesRespondToSelector(id cls, SEL selector, SEL asked);
    id init(id self, SEL selector);
    id retainMessage(id self, SEL selector);
    void releaseMessage(id self, SEL selector);
    BOOL respondsToSelector(id self, SEL selector, SEL asked);
    void setQueue(id self, SEL selector, dispatch_queue_t queue);
    void setObject(id self, SEL selector, id value);
    void setUnsigned(id self, SEL selector, unsigned int value);
    void setSize(id self, SEL selector, CGSize value);
    void setPoint(id self, SEL selector, CGPoint value);
    void setBool(id self, SEL selector, BOOL value);
    id initMode(id self, SEL selector, unsigned int width, unsigned int height, double refreshRate,
                std::optional<unsigned int> transferFunction);
    id initWithDescriptor(id self, SEL selector, id descriptor);
    BOOL applySettings(id self, SEL selector, id settings);
    unsigned int displayIDMessage(id self, SEL selector);
    [[noreturn]] void unrecognizedSelector(id self, SEL selector);

    // ---- Dispatch.
    dispatch_queue_global_t globalQueue(intptr_t identifier, uintptr_t flags);

private:
    using Lock = std::unique_lock<std::recursive_mutex>;

    void record(CallFamily family, std::string line) const;
    void violation(std::string problem) const;
    std::optional<CGError> takeFailure(std::string_view function);

    // Objects.
    SimObject* newObject(ObjectKind kind, SimClass* isa);
    SimObject* lookUp(const void* pointer) const;
    SimObject* lookUpKind(const void* pointer, ObjectKind kind, std::string_view function) const;
    void retainObject(SimObject* object);
    void releaseObject(SimObject* object);
    void destroy(SimObject* object);
    std::string describe(const void* pointer) const;
    std::string describeSelector(SEL selector) const;
    SimObject* newString(std::string text);
    SimObject* newMode(const SimulatedMode& mode, CGDirectDisplayID display);

    // Classes and selectors.
    SimClass* makeClass(const std::string& name, PrivateKind kind);
    SimClass* lookUpClassPointer(const void* pointer) const;
    SimObject* instanceOf(id self, PrivateKind kind) const;
    std::string receiverName(id self) const;
    std::string messagePrefix(id self) const;

    // The display model.
    template <class Result, class Read>
    Result readDisplay(std::string_view function, CGDirectDisplayID display, Result fallback, Read read);
    template <class Result, class Read>
    Result readMode(std::string_view function, CGDisplayModeRef mode, Result fallback, Read read);
    SimulatedDisplay* findDisplay(CGDirectDisplayID displayID);
    const SimulatedDisplay* findDisplay(CGDirectDisplayID displayID) const;
    std::vector<CGDirectDisplayID> activeIDs() const;
    void bringInDueDisplays();
    void queueBurst(const std::vector<CGDirectDisplayID>& onlineBefore,
                    const std::vector<CallbackCall>& ends);
    void connect(SimulatedDisplay display);
    void disconnect(CGDirectDisplayID displayID);
    std::optional<std::size_t> modeIndex(const SimulatedDisplay& display, const SimulatedMode& mode) const;
    SimulatedDisplay virtualDisplayFor(const SimObject& display, const SettingsValues& settings) const;
    void deliverCallbacks();

    const Clock& clock_;
    mutable std::recursive_mutex mutex_;
    mutable std::condition_variable_any changed_;

    platform::ProcessFacts processFacts_{.macOSMajorVersion = 15, .realUserID = 0};
    platform::CoreGraphicsAPI coreGraphics_{};
    platform::ColorSyncAPI colorSync_{};
    platform::CoreFoundationAPI coreFoundation_{};
    platform::ObjCRuntimeAPI objcRuntime_{};
    platform::DispatchAPI dispatch_{};
    std::vector<SimulatedDisplay> displays_;
    struct PendingDisplay {
        SimulatedDisplay display;
        Clock::Instant due;
    };
    std::vector<PendingDisplay> pending_;
    struct PendingRemoval {
        CGDirectDisplayID displayID;
        Clock::Instant due;
    };
    std::vector<PendingRemoval> pendingRemovals_;

    struct ScriptedFailure {
        Failure failure;
        int seen = 0;
    };
    std::map<std::string, ScriptedFailure, std::less<>> failures_;

    std::unordered_map<const void*, std::unique_ptr<SimObject>> objects_;
    std::uint64_t objectsCreated_ = 0;
    const void* trueValue_ = nullptr;
    const void* duplicateModesKey_ = nullptr;

    std::vector<std::unique_ptr<SimClass>> classes_;
    std::unordered_map<std::string, std::unique_ptr<std::string>> selectors_;
    std::unordered_map<const void*, const std::string*> selectorNames_;
    SimClass* bridgeClass_ = nullptr;

    std::map<std::uintptr_t, std::vector<StagedChange>> configurations_;
    std::uintptr_t nextConfiguration_ = 1;
    std::vector<std::uintptr_t> pools_;
    std::uintptr_t nextPool_ = 1;

    VirtualDisplayScript script_;
    std::vector<VirtualDisplayRecord> records_;
    std::size_t descriptorAttempts_ = 0;
    CGDirectDisplayID nextVirtualDisplayID_ = 0x1000;

    std::vector<RegisteredCallback> callbacks_;
    std::deque<std::vector<CallbackCall>> bursts_;
    bool delivering_ = false;
    bool stopping_ = false;

    mutable std::vector<std::pair<CallFamily, std::string>> calls_;
    mutable std::vector<std::string> violations_;

    std::thread callbackThread_;  // last: starts after everything above exists
};

}  // namespace screenweaver::simulation
