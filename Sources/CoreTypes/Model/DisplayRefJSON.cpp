#include "CoreTypes/Model/DisplayRefJSON.hpp"

#include <algorithm>
#include <vector>

#include "CoreTypes/Coding/CaseCoding.hpp"
#include "CoreTypes/Coding/KeyedReader.hpp"

namespace screenweaver {

namespace {

constexpr std::array<std::string_view, 2> caseNames{"virtual", "physical"};

}  // namespace

void JSONForm<DisplayRef>::write(JSONWriter& writer, const DisplayRef& ref) {
    writer.beginObject();
    if (const auto* virtualRef = ref.asVirtual()) {
        writer.key("virtual");
        writer.beginObject();
        writer.key("_0");
        JSONForm<UUID>::write(writer, virtualRef->id);
        writer.endObject();
    } else {
        writer.key("physical");
        writer.beginObject();
        writer.key("colorSyncUUID");
        writer.string(ref.asPhysical()->colorSyncUUID);
        writer.endObject();
    }
    writer.endObject();
}

std::expected<DisplayRef, DecodingError> JSONForm<DisplayRef>::read(const JSONValue& value) {
    auto member = coding::readCase(value, caseNames);
    if (!member) {
        return std::unexpected(std::move(member.error()));
    }
    KeyedReader payload{member->payload};
    DisplayRef ref;
    if (member->index == 0) {
        DisplayRef::Virtual virtualRef;
        payload.required("_0", virtualRef.id);
        ref.value = virtualRef;
    } else {
        DisplayRef::Physical physicalRef;
        payload.required("colorSyncUUID", physicalRef.colorSyncUUID);
        ref.value = std::move(physicalRef);
    }
    auto result = payload.finish(std::move(ref));
    if (!result) {
        result.error().prependKey(member->name);
    }
    return result;
}

void JSONForm<std::unordered_set<DisplayRef>>::write(JSONWriter& writer,
                                                     const std::unordered_set<DisplayRef>& refs) {
    std::vector<const DisplayRef*> sorted;
    sorted.reserve(refs.size());
    for (const auto& ref : refs) {
        sorted.push_back(&ref);
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const DisplayRef* lhs, const DisplayRef* rhs) { return DisplayRefKey::less(*lhs, *rhs); });
    writer.beginArray();
    for (const auto* ref : sorted) {
        JSONForm<DisplayRef>::write(writer, *ref);
    }
    writer.endArray();
}

std::expected<std::unordered_set<DisplayRef>, DecodingError> JSONForm<std::unordered_set<DisplayRef>>::read(
    const JSONValue& value) {
    auto refs = JSONForm<std::vector<DisplayRef>>::read(value);
    if (!refs) {
        return std::unexpected(std::move(refs.error()));
    }
    return std::unordered_set<DisplayRef>(std::make_move_iterator(refs->begin()),
                                          std::make_move_iterator(refs->end()));
}

}  // namespace screenweaver
