#pragma once

#include <optional>
#include <string>
#include <vector>

namespace screenweaver {

/// The application's status as the control protocol reports it.
struct CLIStatus {
    std::optional<std::string> appVersion{};
    /// Absent when no group is active.
    std::optional<std::string> activeGroupName{};
    std::vector<std::string> groupNames{};
    /// A readable description of the group engine's state.
    std::string stateDescription{};
    /// A readable state of group synchronisation.
    std::optional<std::string> cloudSync{};
    /// A readable state of the login-window service.
    std::optional<std::string> loginWindowService{};

    friend bool operator==(const CLIStatus&, const CLIStatus&) = default;
};

}  // namespace screenweaver
