#include "CoreTypes/Coding/JSONForm.hpp"

#include <array>

#include "CoreTypes/Coding/ISO8601.hpp"

namespace screenweaver {

void JSONForm<UUID>::write(JSONWriter& writer, const UUID& value) {
    const auto text = value.canonicalCharacters();
    writer.string(std::string_view{text.data(), text.size()});
}

bool JSONForm<UUID>::read(JSONReader& reader, JSONValue& value, UUID& result) {
    // A UUID in quotes with nothing else, recognised by its characters: hexadecimal digits and
    // hyphens are never an escape, so the string needs no scan for its end.
    constexpr std::size_t quotedLength = 38;
    if (const char* quoted = reader.upcomingText(); quoted[0] == '"' && quoted[quotedLength - 1] == '"' &&
                                                    UUID::parse({quoted + 1, quotedLength - 2}, result)) {
        return reader.passRecognised(1, 0);
    }
    std::string_view text;
    if (!reader.string(value, text)) {
        return false;
    }
    if (UUID::parse(text, result)) {
        return true;
    }
    return reader.fail(DecodingError::dataCorrupted("Attempted to decode UUID from invalid UUID string."));
}

void JSONForm<Date>::write(JSONWriter& writer, const Date& value) {
    std::array<char, ISO8601::longestText> text{};
    if (const std::size_t length = ISO8601::write(value, text.data()); length > 0) {
        writer.string({text.data(), length});
        return;
    }
    writer.fail(EncodingError{"Date outside the years 0000 to 9999 cannot be written in ISO 8601."});
    writer.null();
}

bool JSONForm<Date>::read(JSONReader& reader, JSONValue& value, Date& result) {
    std::string_view text;
    if (!reader.string(value, text)) {
        return false;
    }
    if (const auto date = ISO8601::parse(text)) {
        result = *date;
        return true;
    }
    return reader.fail(DecodingError::dataCorrupted("Expected date string to be ISO8601-formatted."));
}

}  // namespace screenweaver
