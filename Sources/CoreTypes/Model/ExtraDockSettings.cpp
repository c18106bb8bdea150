#include "CoreTypes/Model/ExtraDockSettings.hpp"

#include "CoreTypes/Hasher.hpp"

namespace screenweaver {

const ExtraDockSettings& ExtraDockSettings::defaults() {
    static const ExtraDockSettings settings{ExtraDockMode::off, {}, true};
    return settings;
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::ExtraDockSettings>::operator()(
    const screenweaver::ExtraDockSettings& settings) const noexcept {
    return screenweaver::hashFields(screenweaver::rawValue(settings.mode), settings.enabledDisplays,
                                    settings.hideOnNativeDockDisplay);
}
