#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <vector>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Protocols/DisplaySleeping.hpp"

namespace screenweaver {

/// Why a program could not be started.
struct ProgramLaunchError {
    /// The cause as the system words it, e.g. "No such file or directory".
    std::string reason;

    [[nodiscard]] std::string description() const { return reason; }

    friend bool operator==(const ProgramLaunchError&, const ProgramLaunchError&) = default;
};

/// Puts every display to sleep at once through the power-management tool.
class DisplaySleeper final : public DisplaySleeping {
public:
    /// Starts the program at `path` with `arguments`, waits for it and gives its exit status.
    /// Called from any thread.
    using Runner = std::function<std::expected<std::int32_t, ProgramLaunchError>(
        const std::string& path, const std::vector<std::string>& arguments)>;

    /// With no runner the sleeper starts the tool itself (see `spawn`).
    explicit DisplaySleeper(Runner run = {});

    /// Runs "/usr/bin/pmset displaysleepnow" and blocks until it exits. Holds no lock and keeps no
    /// state.
    [[nodiscard]] std::expected<void, DisplayError> sleepDisplays() override;

    /// The built-in runner: starts the program with its standard output and error on the null
    /// device, waits for it and gives its exit status (the signal number when a signal ended it).
    /// A launch failure gives the system's wording of its cause.
    [[nodiscard]] static std::expected<std::int32_t, ProgramLaunchError> spawn(
        const std::string& path, const std::vector<std::string>& arguments);

private:
    Runner run_;
};

}  // namespace screenweaver
