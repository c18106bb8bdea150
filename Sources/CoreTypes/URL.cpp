#include "CoreTypes/URL.hpp"

#include <fmt/format.h>

namespace screenweaver {

namespace {

bool isAlpha(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool isUnreserved(char character) {
    return isAlpha(character) || isDigit(character) || character == '-' || character == '.' ||
           character == '_' || character == '~';
}

bool isSubDelimiter(char character) {
    return std::string_view{"!$&'()*+,;="}.find(character) != std::string_view::npos;
}

// What may stand unencoded in a URL after its scheme: unreserved, sub-delimiters, the general
// delimiters that structure it, and `%` when it starts an escape.
bool isValidAfterScheme(std::string_view text) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (character == '%') {
            if (index + 2 >= text.size() || !isHexDigit(text[index + 1]) || !isHexDigit(text[index + 2])) {
                return false;
            }
            index += 2;
            continue;
        }
        if (!isUnreserved(character) && !isSubDelimiter(character) &&
            std::string_view{":/?#[]@"}.find(character) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

int hexValue(char character) {
    if (isDigit(character)) {
        return character - '0';
    }
    return (character | 0x20) - 'a' + 10;
}

}  // namespace

std::optional<URL> URL::parse(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isAlpha(text[0])) {
        return std::nullopt;
    }
    for (const char character : text.substr(0, colon)) {
        if (!isAlpha(character) && !isDigit(character) && character != '+' && character != '-' &&
            character != '.') {
            return std::nullopt;
        }
    }
    const auto rest = text.substr(colon + 1);
    if (!rest.starts_with("//") || !isValidAfterScheme(rest)) {
        return std::nullopt;
    }
    const auto authority = rest.substr(2, rest.find_first_of("/?#", 2) - 2);
    const auto host =
        authority.substr(authority.find('@') == std::string_view::npos ? 0 : authority.find('@') + 1);
    if (host.empty() || host.front() == ':') {
        return std::nullopt;
    }
    return URL{std::string{text}};
}

URL URL::fileURL(std::string_view absolutePath) {
    std::string text = "file://";
    for (const char character : absolutePath) {
        if (isUnreserved(character) || character == '/' || character == '!' || character == '$' ||
            character == '&' || character == '\'' || character == '(' || character == ')' ||
            character == '*' || character == '+' || character == ',' || character == ';' ||
            character == '=' || character == ':' || character == '@') {
            text += character;
        } else {
            text += fmt::format("%{:02X}", static_cast<unsigned char>(character));
        }
    }
    return URL{std::move(text)};
}

std::string URL::scheme() const {
    return text_.substr(0, text_.find(':'));
}

std::string URL::host() const {
    const auto start = text_.find("//") + 2;
    auto authority = std::string_view{text_}.substr(start, text_.find_first_of("/?#", start) - start);
    if (const auto at = authority.find('@'); at != std::string_view::npos) {
        authority.remove_prefix(at + 1);
    }
    return std::string{authority.substr(0, authority.find(':'))};
}

std::string_view URL::encodedPath() const {
    const auto authorityStart = text_.find("//") + 2;
    const auto pathStart = text_.find_first_of("/?#", authorityStart);
    if (pathStart == std::string::npos || text_[pathStart] != '/') {
        return {};
    }
    const auto pathEnd = text_.find_first_of("?#", pathStart);
    return std::string_view{text_}.substr(
        pathStart, pathEnd == std::string::npos ? std::string::npos : pathEnd - pathStart);
}

std::string URL::path() const {
    const auto encoded = encodedPath();
    std::string decoded;
    for (std::size_t index = 0; index < encoded.size(); ++index) {
        if (encoded[index] == '%' && index + 2 < encoded.size() && isHexDigit(encoded[index + 1]) &&
            isHexDigit(encoded[index + 2])) {
            decoded += static_cast<char>(hexValue(encoded[index + 1]) * 16 + hexValue(encoded[index + 2]));
            index += 2;
        } else {
            decoded += encoded[index];
        }
    }
    return decoded;
}

}  // namespace screenweaver
