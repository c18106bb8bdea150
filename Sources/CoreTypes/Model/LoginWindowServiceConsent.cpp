#include "CoreTypes/Model/LoginWindowServiceConsent.hpp"

namespace screenweaver {

std::string_view rawValue(LoginWindowServiceConsent consent) {
    switch (consent) {
        case LoginWindowServiceConsent::notAsked:
            return "notAsked";
        case LoginWindowServiceConsent::declined:
            return "declined";
        case LoginWindowServiceConsent::wanted:
            return "wanted";
    }
    return "notAsked";
}

std::optional<LoginWindowServiceConsent> loginWindowServiceConsentFromRawValue(std::string_view raw) {
    for (const LoginWindowServiceConsent consent : allLoginWindowServiceConsents) {
        if (rawValue(consent) == raw) {
            return consent;
        }
    }
    return std::nullopt;
}

}  // namespace screenweaver
