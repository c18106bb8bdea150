#include "CoreTypes/Model/DisplayRefJSON.hpp"

#include <cstring>
#include <string>
#include <string_view>

#include "CoreTypes/Coding/CaseForm.hpp"
#include "CoreTypes/Coding/JSONText.hpp"
#include "CoreTypes/Coding/RecordForm.hpp"

namespace screenweaver {

namespace {

constexpr auto form = coding::caseForm<DisplayRef>(
    {"virtual", "physical"}, coding::RecordForm{coding::required("_0", &DisplayRef::Virtual::id)},
    coding::RecordForm{coding::required("colorSyncUUID", &DisplayRef::Physical::colorSyncUUID)});

// A reference spelled exactly as the writer spells it, `{"virtual":{"_0":"<UUID>"}}` or
// `{"physical":{"colorSyncUUID":"<text without escapes>"}}`, recognised by its characters: nine
// tokens in one comparison instead of two objects read key by key. A document holds a reference
// for every display of every group, so this is most of what it holds. Anything else, other
// spellings included, is read the ordinary way.
bool readWriterSpelling(JSONReader& reader, DisplayRef& result) {
    constexpr std::uint32_t tokens = 9;
    constexpr std::size_t levels = 2;
    constexpr std::string_view end = "\"}}";
    constexpr const char virtualStart[] = R"({"virtual":{"_0":")";
    constexpr const char physicalStart[] = R"({"physical":{"colorSyncUUID":")";
    constexpr std::size_t uuidLength = 36;
    const char* text = reader.upcomingText();
    if (coding::text::startsWith(text, virtualStart)) {
        const char* uuid = text + sizeof virtualStart - 1;
        UUID id;
        if (std::memcmp(uuid + uuidLength, end.data(), end.size()) != 0 ||
            !UUID::parse({uuid, uuidLength}, id) || !reader.passRecognised(tokens, levels)) {
            return false;
        }
        result.value.emplace<DisplayRef::Virtual>(id);
        return true;
    }
    if (coding::text::startsWith(text, physicalStart)) {
        const char* characters = text + sizeof physicalStart - 1;
        const char* quote = coding::text::quoteOrBackslash(characters);
        if (std::memcmp(quote, end.data(), end.size()) != 0 || !reader.passRecognised(tokens, levels)) {
            return false;
        }
        result.value.emplace<DisplayRef::Physical>().colorSyncUUID.assign(
            characters, static_cast<std::size_t>(quote - characters));
        return true;
    }
    return false;
}

}  // namespace

void JSONForm<DisplayRef>::write(JSONWriter& writer, const DisplayRef& ref) {
    form.write(writer, ref);
}

bool JSONForm<DisplayRef>::read(JSONReader& reader, JSONValue& value, DisplayRef& result) {
    return readWriterSpelling(reader, result) || form.read(reader, value, result);
}

}  // namespace screenweaver
