#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// Exports a diagnostics bundle.
class DiagnosticsExporting {
public:
    virtual ~DiagnosticsExporting() = default;

    /// Writes the bundle into `directory` and returns its path; blocks until it is written, a
    /// stop request ending the wait early. Fails with `exportFailed(reason:)`.
    [[nodiscard]] virtual std::expected<std::filesystem::path, DiagnosticsError> exportDiagnostics(
        const std::filesystem::path& directory, const StopToken& stop) = 0;

protected:
    DiagnosticsExporting() = default;
    DiagnosticsExporting(const DiagnosticsExporting&) = default;
    DiagnosticsExporting& operator=(const DiagnosticsExporting&) = default;
};

/// Checks the update manifest; the related settings are `automaticUpdateChecks`,
/// `lastUpdateCheckAt` and `skippedUpdateVersion`.
class UpdateProviding {
public:
    virtual ~UpdateProviding() = default;

    /// The version found by the last check when it is newer than the running one and not skipped.
    [[nodiscard]] virtual std::optional<std::string> availableUpdateVersion() const = 0;

    /// Starts a check of the manifest; `userInitiated` shows the outcome even when there is
    /// nothing new.
    virtual void checkForUpdates(bool userInitiated) = 0;

protected:
    UpdateProviding() = default;
    UpdateProviding(const UpdateProviding&) = default;
    UpdateProviding& operator=(const UpdateProviding&) = default;
};

/// Shows the on-screen brightness indicator; used when `interceptBrightnessKeys` is on.
class BrightnessOSDPresenting {
public:
    virtual ~BrightnessOSDPresenting() = default;

    /// Shows `level` (0 to 1) on the display `displayID`.
    virtual void showBrightness(double level, std::uint32_t displayID) = 0;

protected:
    BrightnessOSDPresenting() = default;
    BrightnessOSDPresenting(const BrightnessOSDPresenting&) = default;
    BrightnessOSDPresenting& operator=(const BrightnessOSDPresenting&) = default;
};

}  // namespace screenweaver
