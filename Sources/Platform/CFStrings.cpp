#include "Platform/CFStrings.hpp"

#include <vector>

namespace screenweaver::platform {

CFRef<CFStringRef> makeCFString(const CoreFoundationAPI& coreFoundation, std::string_view utf8) {
    const auto* const bytes = reinterpret_cast<const UInt8*>(utf8.data());
    return CFRef<CFStringRef>::adopt(
        coreFoundation, coreFoundation.CFStringCreateWithBytes(coreFoundation.kCFAllocatorDefault, bytes,
                                                               static_cast<CFIndex>(utf8.size()),
                                                               kCFStringEncodingUTF8, Boolean{0}));
}

std::optional<std::string> utf8String(const CoreFoundationAPI& coreFoundation, CFStringRef string) {
    if (string == nullptr) {
        return std::nullopt;
    }
    if (const char* const direct = coreFoundation.CFStringGetCStringPtr(string, kCFStringEncodingUTF8)) {
        return std::string{direct};
    }
    // The maximum size does not count the terminating NUL, which the buffer must hold too.
    const CFIndex capacity = coreFoundation.CFStringGetMaximumSizeForEncoding(
                                 coreFoundation.CFStringGetLength(string), kCFStringEncodingUTF8) +
                             1;
    if (capacity <= 0) {
        return std::nullopt;
    }
    std::vector<char> buffer(static_cast<std::size_t>(capacity), '\0');
    if (coreFoundation.CFStringGetCString(string, buffer.data(), capacity, kCFStringEncodingUTF8) == 0) {
        return std::nullopt;
    }
    return std::string{buffer.data()};
}

}  // namespace screenweaver::platform
