#pragma once

#include "Platform/SystemDeclarations.hpp"

namespace screenweaver {

/// The four private classes, found and checked: all present, or no value at all. Class objects are
/// owned by the runtime and live as long as the process.
struct ResolvedPrivateAPI {
    Class descriptorType = nullptr;
    Class modeType = nullptr;
    Class settingsType = nullptr;
    Class displayType = nullptr;

    friend bool operator==(const ResolvedPrivateAPI&, const ResolvedPrivateAPI&) = default;
};

}  // namespace screenweaver
