#pragma once

#include <expected>
#include <functional>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/CLIReply.hpp"
#include "CoreTypes/Model/CLIRequest.hpp"
#include "CoreTypes/Model/HotkeyAction.hpp"
#include "CoreTypes/Model/KeyCombo.hpp"

namespace screenweaver {

/// Registers global hot keys. Failures: `hotkeyRegistrationFailed(status:)` with the platform's
/// status code, `hotkeyConflict` when another program holds the combination.
class HotkeyRegistering {
public:
    virtual ~HotkeyRegistering() = default;

    /// Makes `combo` trigger `action`, replacing the action's earlier combination.
    [[nodiscard]] virtual std::expected<void, AutomationError> registerHotkey(const KeyCombo& combo,
                                                                              HotkeyAction action) = 0;

    /// Removes the action's combination; nothing happens when it has none.
    virtual void unregisterHotkey(HotkeyAction action) = 0;

protected:
    HotkeyRegistering() = default;
    HotkeyRegistering(const HotkeyRegistering&) = default;
    HotkeyRegistering& operator=(const HotkeyRegistering&) = default;
};

/// Whether the application starts at login; mirrors `AppSettings::launchAtLogin`.
class LaunchAtLoginManaging {
public:
    virtual ~LaunchAtLoginManaging() = default;

    /// Whether launch at login is in force right now.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Switches it; fails with `launchAtLoginFailed(reason:)`.
    [[nodiscard]] virtual std::expected<void, AutomationError> setEnabled(bool enabled) = 0;

protected:
    LaunchAtLoginManaging() = default;
    LaunchAtLoginManaging(const LaunchAtLoginManaging&) = default;
    LaunchAtLoginManaging& operator=(const LaunchAtLoginManaging&) = default;
};

/// The side that serves the control protocol to the command-line tool: each request is answered
/// with exactly one reply, errors included (as `CLIReply::error`).
class CLICommandServing {
public:
    /// Answers one request.
    using Handler = std::function<CLIReply(const CLIRequest&)>;

    virtual ~CLICommandServing() = default;

    /// Opens the channel and starts answering requests with `handler`; fails with
    /// `socketUnavailable(reason:)` when the channel cannot be opened.
    [[nodiscard]] virtual std::expected<void, AutomationError> startServing(Handler handler) = 0;

    /// Stops answering and closes the channel; nothing happens when it is not open.
    virtual void stopServing() = 0;

protected:
    CLICommandServing() = default;
    CLICommandServing(const CLICommandServing&) = default;
    CLICommandServing& operator=(const CLICommandServing&) = default;
};

}  // namespace screenweaver
