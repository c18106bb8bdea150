#include "CoreTypes/Model/Config.hpp"

namespace screenweaver {

const Config& Config::empty() {
    static const Config config{currentSchemaVersion, {}, std::nullopt, AppSettings::defaults(), {}};
    return config;
}

}  // namespace screenweaver
