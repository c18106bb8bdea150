#include "Platform/ProcessFacts.hpp"

#include <charconv>

namespace screenweaver::platform {

std::optional<int> macOSMajorVersion(std::string_view productVersion) {
    int major = 0;
    const char* const end = productVersion.data() + productVersion.size();
    const auto [afterMajor, error] = std::from_chars(productVersion.data(), end, major);
    if (error != std::errc{} || major <= 0) {
        return std::nullopt;
    }
    // No macOS release was numbered 16: it is the compatibility name of 26.
    if (major == 16) {
        return 26;
    }
    if (major == 10 && afterMajor != end && *afterMajor == '.') {
        int minor = 0;
        const auto [afterMinor, minorError] = std::from_chars(afterMajor + 1, end, minor);
        // 10.16 is the compatibility name of every release from 11 to 15; 11 is the safe reading.
        if (minorError == std::errc{} && minor == 16) {
            return 11;
        }
    }
    return major;
}

}  // namespace screenweaver::platform
