#pragma once

#include <optional>
#include <string>

#include "CoreTypes/Model/Config.hpp"

namespace screenweaver {

/// What loading the configuration document gave.
struct ConfigLoadOutcome {
    /// The document now in force.
    Config config{};
    /// A sentence for the user when the document had to be recovered or repaired.
    std::optional<std::string> recoveryNote{};
    /// No document existed before and one was made.
    bool isFirstLaunch = false;

    friend bool operator==(const ConfigLoadOutcome&, const ConfigLoadOutcome&) = default;
};

}  // namespace screenweaver
