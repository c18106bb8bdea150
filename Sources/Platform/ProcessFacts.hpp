#pragma once

#include <optional>
#include <string_view>
#include <sys/types.h>

namespace screenweaver::platform {

/// What the system reads about the process it runs in.
struct ProcessFacts {
    // The major version of the running macOS (14 for "14.2.1"); absent on other systems.
    std::optional<int> macOSMajorVersion;
    // The real user ID (getuid()).
    uid_t realUserID = 0;

    bool operator==(const ProcessFacts&) const = default;
};

/// The macOS major version from the product version text the kernel reports
/// ("kern.osproductversion", e.g. "14.2.1"), or absent when the text does not start with a number.
/// The compatibility versions a process may be shown are mapped back to the real release:
/// "10.16" (a process built with an SDK older than 11 on macOS 11 to 15) is 11, and "16.x" (built
/// with an SDK older than 26 on macOS 26) is 26.
[[nodiscard]] std::optional<int> macOSMajorVersion(std::string_view productVersion);

}  // namespace screenweaver::platform
