#include "VirtualDisplayKit/PrivateAPI/PrivateAPIResolver.hpp"

#include <fmt/format.h>
#include <string>

#include "CoreTypes/Log.hpp"
#include "VirtualDisplayKit/PrivateAPI/CGVirtualDisplayInterface.hpp"

namespace screenweaver::PrivateAPIResolver {

const std::unordered_map<std::string_view, std::span<const std::string_view>>& requiredSelectors() {
    namespace Interface = CGVirtualDisplayInterface;
    static const std::unordered_map<std::string_view, std::span<const std::string_view>> selectors{
        {Interface::descriptorClassName, Interface::descriptorSelectors},
        {Interface::modeClassName, Interface::modeSelectors},
        {Interface::settingsClassName, Interface::settingsSelectors},
        {Interface::displayClassName, Interface::displaySelectors},
    };
    return selectors;
}

Class validatedClass(const platform::ObjCRuntime& runtime, std::string_view name) {
    // A class outside the four has no required selectors to check it against: it is never used.
    const auto required = requiredSelectors().find(name);
    if (required == requiredSelectors().end()) {
        return nullptr;
    }
    const std::string className{name};
    const Class cls = runtime.lookUpClass(className.c_str());
    if (cls == nullptr) {
        Log::virtualDisplay().log(fmt::format("private class {} is absent", name));
        return nullptr;
    }
    for (const std::string_view selector : required->second) {
        if (!runtime.instancesRespondToSelector(cls, runtime.selector(std::string{selector}.c_str()))) {
            Log::virtualDisplay().log(fmt::format("private class {} lacks {}", name, selector));
            return nullptr;
        }
    }
    return cls;
}

std::optional<ResolvedPrivateAPI> resolve(const platform::ObjCRuntimeAPI* runtimeAPI) {
    if (runtimeAPI == nullptr) {
        return std::nullopt;
    }
    namespace Interface = CGVirtualDisplayInterface;
    const platform::ObjCRuntime runtime{*runtimeAPI};
    ResolvedPrivateAPI api;
    for (const auto& [name, slot] : {std::pair{Interface::descriptorClassName, &api.descriptorType},
                                     std::pair{Interface::modeClassName, &api.modeType},
                                     std::pair{Interface::settingsClassName, &api.settingsType},
                                     std::pair{Interface::displayClassName, &api.displayType}}) {
        *slot = validatedClass(runtime, name);
        if (*slot == nullptr) {
            return std::nullopt;
        }
    }
    return api;
}

}  // namespace screenweaver::PrivateAPIResolver
