#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/CFRef.hpp"
#include "Platform/CoreFoundationAPI.hpp"

namespace screenweaver::platform {

/// A new CoreFoundation string holding `utf8`; empty when the bytes are not valid UTF-8 or the
/// string cannot be made.
[[nodiscard]] CFRef<CFStringRef> makeCFString(const CoreFoundationAPI& coreFoundation, std::string_view utf8);

/// The UTF-8 text of a CoreFoundation string (the string is borrowed); absent for a null string or
/// when the text cannot be read back.
[[nodiscard]] std::optional<std::string> utf8String(const CoreFoundationAPI& coreFoundation,
                                                    CFStringRef string);

}  // namespace screenweaver::platform
