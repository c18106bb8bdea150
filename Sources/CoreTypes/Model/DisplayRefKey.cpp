#include "CoreTypes/Model/DisplayRefKey.hpp"

namespace screenweaver::DisplayRefKey {

namespace {

constexpr std::string_view virtualPrefix = "virtual";
constexpr std::string_view physicalPrefix = "physical";

}  // namespace

std::string string(const DisplayRef& ref) {
    if (const auto* virtualRef = ref.asVirtual()) {
        return std::string{virtualPrefix} + ":" + virtualRef->id.uuidString();
    }
    return std::string{physicalPrefix} + ":" + ref.asPhysical()->colorSyncUUID;
}

std::optional<DisplayRef> ref(std::string_view key) {
    const auto colon = key.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view prefix = key.substr(0, colon);
    const std::string_view rest = key.substr(colon + 1);
    if (prefix == virtualPrefix) {
        if (const auto id = UUID::parse(rest)) {
            return DisplayRef::virtualDisplay(*id);
        }
        return std::nullopt;
    }
    if (prefix == physicalPrefix) {
        return DisplayRef::physical(std::string{rest});
    }
    return std::nullopt;
}

bool less(const DisplayRef& lhs, const DisplayRef& rhs) {
    const auto* leftPhysical = lhs.asPhysical();
    const auto* rightPhysical = rhs.asPhysical();
    if (leftPhysical && rightPhysical) {
        return leftPhysical->colorSyncUUID < rightPhysical->colorSyncUUID;
    }
    if (leftPhysical || rightPhysical) {
        return leftPhysical != nullptr;
    }
    return lhs.asVirtual()->id < rhs.asVirtual()->id;
}

}  // namespace screenweaver::DisplayRefKey
