#include "CoreTypes/Model/DisplayGroup.hpp"

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

Date DisplayGroup::stamp(const Date& date) {
    return std::chrono::floor<std::chrono::seconds>(date);
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::DisplayGroup>::operator()(
    const screenweaver::DisplayGroup& group) const noexcept {
    return screenweaver::hashFields(group.id, group.name, group.symbol, group.displays, group.mainDisplayRef,
                                    group.layout, group.includePhysicalDisplays, group.modes,
                                    group.protectedDisplays, group.hotkey, group.activateOnLaunch,
                                    group.extraDockSettings, group.modifiedAt);
}
