#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace screenweaver {

/// Whether the user was asked about, refused or asked for the service that runs at the login
/// window.
enum class LoginWindowServiceConsent {
    notAsked,
    declined,
    wanted,
};

/// Every case, in declaration order.
inline constexpr std::array<LoginWindowServiceConsent, 3> allLoginWindowServiceConsents{
    LoginWindowServiceConsent::notAsked,
    LoginWindowServiceConsent::declined,
    LoginWindowServiceConsent::wanted,
};

/// The case name, which is also the JSON form.
std::string_view rawValue(LoginWindowServiceConsent consent);

/// The case whose raw value is exactly `raw` (case-sensitive), or nothing.
std::optional<LoginWindowServiceConsent> loginWindowServiceConsentFromRawValue(std::string_view raw);

}  // namespace screenweaver
