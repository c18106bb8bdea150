#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "CoreTypes/DDCControl.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/UUID.hpp"

// The error types that cross a module boundary. Each is one enum of cases with associated values,
// written as a variant of one small struct per case; values carry no message of their own beyond
// the `reason` texts composed by whoever raises them. Equality is member-wise, and
// `description()` gives the textual form: `creationFailed(reason: "...")`, `notActiveAfterCreation`.

namespace screenweaver {

/// Failures of display arrangement.
struct DisplayError {
    struct ModeListUnavailable {
        std::uint32_t displayID;
        friend bool operator==(const ModeListUnavailable&, const ModeListUnavailable&) = default;
    };
    struct ConfigurationFailed {
        std::string reason;
        friend bool operator==(const ConfigurationFailed&, const ConfigurationFailed&) = default;
    };
    struct InvalidLayout {
        std::string reason;
        friend bool operator==(const InvalidLayout&, const InvalidLayout&) = default;
    };
    struct DisplayNotFound {
        DisplayRef ref;
        friend bool operator==(const DisplayNotFound&, const DisplayNotFound&) = default;
    };
    struct DisplaySleepFailed {
        std::string reason;
        friend bool operator==(const DisplaySleepFailed&, const DisplaySleepFailed&) = default;
    };
    struct EnumerationFailed {
        friend bool operator==(const EnumerationFailed&, const EnumerationFailed&) = default;
    };
    struct WouldLeaveZeroDisplays {
        friend bool operator==(const WouldLeaveZeroDisplays&, const WouldLeaveZeroDisplays&) = default;
    };

    std::variant<ModeListUnavailable, ConfigurationFailed, InvalidLayout, DisplayNotFound, DisplaySleepFailed,
                 EnumerationFailed, WouldLeaveZeroDisplays>
        value;

    static DisplayError modeListUnavailable(std::uint32_t displayID) {
        return {ModeListUnavailable{displayID}};
    }
    static DisplayError configurationFailed(std::string reason) {
        return {ConfigurationFailed{std::move(reason)}};
    }
    static DisplayError invalidLayout(std::string reason) { return {InvalidLayout{std::move(reason)}}; }
    static DisplayError displayNotFound(DisplayRef ref) { return {DisplayNotFound{std::move(ref)}}; }
    static DisplayError displaySleepFailed(std::string reason) {
        return {DisplaySleepFailed{std::move(reason)}};
    }
    static DisplayError enumerationFailed() { return {EnumerationFailed{}}; }
    static DisplayError wouldLeaveZeroDisplays() { return {WouldLeaveZeroDisplays{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const DisplayError&, const DisplayError&) = default;
};

/// Failures of virtual displays.
struct VirtualDisplayError {
    struct ApiUnavailable {
        std::string reason;
        friend bool operator==(const ApiUnavailable&, const ApiUnavailable&) = default;
    };
    struct UnsupportedOSVersion {
        std::string reason;
        friend bool operator==(const UnsupportedOSVersion&, const UnsupportedOSVersion&) = default;
    };
    struct InvalidSpec {
        std::string reason;
        friend bool operator==(const InvalidSpec&, const InvalidSpec&) = default;
    };
    struct CreationFailed {
        std::string reason;
        friend bool operator==(const CreationFailed&, const CreationFailed&) = default;
    };
    struct NotActiveAfterCreation {
        friend bool operator==(const NotActiveAfterCreation&, const NotActiveAfterCreation&) = default;
    };
    struct ConfigurationRejected {
        friend bool operator==(const ConfigurationRejected&, const ConfigurationRejected&) = default;
    };
    struct DisabledByKillSwitch {
        friend bool operator==(const DisabledByKillSwitch&, const DisabledByKillSwitch&) = default;
    };

    std::variant<ApiUnavailable, UnsupportedOSVersion, InvalidSpec, CreationFailed, NotActiveAfterCreation,
                 ConfigurationRejected, DisabledByKillSwitch>
        value;

    static VirtualDisplayError apiUnavailable(std::string reason) {
        return {ApiUnavailable{std::move(reason)}};
    }
    static VirtualDisplayError unsupportedOSVersion(std::string reason) {
        return {UnsupportedOSVersion{std::move(reason)}};
    }
    static VirtualDisplayError invalidSpec(std::string reason) { return {InvalidSpec{std::move(reason)}}; }
    static VirtualDisplayError creationFailed(std::string reason) {
        return {CreationFailed{std::move(reason)}};
    }
    static VirtualDisplayError notActiveAfterCreation() { return {NotActiveAfterCreation{}}; }
    static VirtualDisplayError configurationRejected() { return {ConfigurationRejected{}}; }
    static VirtualDisplayError disabledByKillSwitch() { return {DisabledByKillSwitch{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const VirtualDisplayError&, const VirtualDisplayError&) = default;
};

/// Failures of activating a display group.
struct GroupActivationError {
    struct VirtualDisplayFailed {
        std::string message;
        friend bool operator==(const VirtualDisplayFailed&, const VirtualDisplayFailed&) = default;
    };
    struct ArrangementFailed {
        std::string message;
        friend bool operator==(const ArrangementFailed&, const ArrangementFailed&) = default;
    };
    struct RollbackFailed {
        std::string message;
        friend bool operator==(const RollbackFailed&, const RollbackFailed&) = default;
    };
    struct GroupNotFound {
        UUID groupID;
        friend bool operator==(const GroupNotFound&, const GroupNotFound&) = default;
    };
    struct WouldLeaveZeroDisplays {
        friend bool operator==(const WouldLeaveZeroDisplays&, const WouldLeaveZeroDisplays&) = default;
    };
    struct VirtualDisplaysDisabled {
        friend bool operator==(const VirtualDisplaysDisabled&, const VirtualDisplaysDisabled&) = default;
    };
    struct Cancelled {
        friend bool operator==(const Cancelled&, const Cancelled&) = default;
    };
    struct EngineBusy {
        friend bool operator==(const EngineBusy&, const EngineBusy&) = default;
    };

    std::variant<VirtualDisplayFailed, ArrangementFailed, RollbackFailed, GroupNotFound,
                 WouldLeaveZeroDisplays, VirtualDisplaysDisabled, Cancelled, EngineBusy>
        value;

    static GroupActivationError virtualDisplayFailed(std::string message) {
        return {VirtualDisplayFailed{std::move(message)}};
    }
    static GroupActivationError arrangementFailed(std::string message) {
        return {ArrangementFailed{std::move(message)}};
    }
    static GroupActivationError rollbackFailed(std::string message) {
        return {RollbackFailed{std::move(message)}};
    }
    static GroupActivationError groupNotFound(const UUID& groupID) { return {GroupNotFound{groupID}}; }
    static GroupActivationError wouldLeaveZeroDisplays() { return {WouldLeaveZeroDisplays{}}; }
    static GroupActivationError virtualDisplaysDisabled() { return {VirtualDisplaysDisabled{}}; }
    static GroupActivationError cancelled() { return {Cancelled{}}; }
    static GroupActivationError engineBusy() { return {EngineBusy{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const GroupActivationError&, const GroupActivationError&) = default;
};

/// Failures of storing the configuration document.
struct PersistenceError {
    struct Unreadable {
        std::string reason;
        friend bool operator==(const Unreadable&, const Unreadable&) = default;
    };
    struct CorruptedPrimary {
        bool recoveredFromBackup;
        friend bool operator==(const CorruptedPrimary&, const CorruptedPrimary&) = default;
    };
    struct WriteFailed {
        std::string reason;
        friend bool operator==(const WriteFailed&, const WriteFailed&) = default;
    };
    struct MigrationFailed {
        std::int64_t from;  // schema versions
        std::int64_t to;
        std::string reason;
        friend bool operator==(const MigrationFailed&, const MigrationFailed&) = default;
    };
    struct UnsupportedSchemaVersion {
        std::int64_t version;
        friend bool operator==(const UnsupportedSchemaVersion&, const UnsupportedSchemaVersion&) = default;
    };

    std::variant<Unreadable, CorruptedPrimary, WriteFailed, MigrationFailed, UnsupportedSchemaVersion> value;

    static PersistenceError unreadable(std::string reason) { return {Unreadable{std::move(reason)}}; }
    static PersistenceError corruptedPrimary(bool recoveredFromBackup) {
        return {CorruptedPrimary{recoveredFromBackup}};
    }
    static PersistenceError writeFailed(std::string reason) { return {WriteFailed{std::move(reason)}}; }
    static PersistenceError migrationFailed(std::int64_t from, std::int64_t to, std::string reason) {
        return {MigrationFailed{from, to, std::move(reason)}};
    }
    static PersistenceError unsupportedSchemaVersion(std::int64_t version) {
        return {UnsupportedSchemaVersion{version}};
    }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const PersistenceError&, const PersistenceError&) = default;
};

/// Failures of monitor control over DDC/CI.
struct DDCError {
    struct ReadFailed {
        DDCControl control;
        friend bool operator==(const ReadFailed&, const ReadFailed&) = default;
    };
    struct WriteFailed {
        DDCControl control;
        friend bool operator==(const WriteFailed&, const WriteFailed&) = default;
    };
    struct Unsupported {
        friend bool operator==(const Unsupported&, const Unsupported&) = default;
    };
    struct ServiceUnavailable {
        friend bool operator==(const ServiceUnavailable&, const ServiceUnavailable&) = default;
    };
    struct SoftwareBrightnessUnavailable {
        friend bool operator==(const SoftwareBrightnessUnavailable&,
                               const SoftwareBrightnessUnavailable&) = default;
    };

    std::variant<ReadFailed, WriteFailed, Unsupported, ServiceUnavailable, SoftwareBrightnessUnavailable>
        value;

    static DDCError readFailed(DDCControl control) { return {ReadFailed{control}}; }
    static DDCError writeFailed(DDCControl control) { return {WriteFailed{control}}; }
    static DDCError unsupported() { return {Unsupported{}}; }
    static DDCError serviceUnavailable() { return {ServiceUnavailable{}}; }
    static DDCError softwareBrightnessUnavailable() { return {SoftwareBrightnessUnavailable{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const DDCError&, const DDCError&) = default;
};

/// Failures of a display catalog source.
struct CatalogError {
    struct InvalidJSON {
        std::string reason;
        friend bool operator==(const InvalidJSON&, const InvalidJSON&) = default;
    };
    struct BundledCatalogMissing {
        friend bool operator==(const BundledCatalogMissing&, const BundledCatalogMissing&) = default;
    };

    std::variant<InvalidJSON, BundledCatalogMissing> value;

    static CatalogError invalidJSON(std::string reason) { return {InvalidJSON{std::move(reason)}}; }
    static CatalogError bundledCatalogMissing() { return {BundledCatalogMissing{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const CatalogError&, const CatalogError&) = default;
};

/// Failures of hot keys, launch at login and the control socket.
struct AutomationError {
    struct HotkeyRegistrationFailed {
        std::int32_t status;  // the platform's status code
        friend bool operator==(const HotkeyRegistrationFailed&, const HotkeyRegistrationFailed&) = default;
    };
    struct LaunchAtLoginFailed {
        std::string reason;
        friend bool operator==(const LaunchAtLoginFailed&, const LaunchAtLoginFailed&) = default;
    };
    struct LoginWindowServiceFailed {
        std::string reason;
        friend bool operator==(const LoginWindowServiceFailed&, const LoginWindowServiceFailed&) = default;
    };
    struct SocketUnavailable {
        std::string reason;
        friend bool operator==(const SocketUnavailable&, const SocketUnavailable&) = default;
    };
    struct HotkeyConflict {
        friend bool operator==(const HotkeyConflict&, const HotkeyConflict&) = default;
    };
    struct AppNotRunning {
        friend bool operator==(const AppNotRunning&, const AppNotRunning&) = default;
    };

    std::variant<HotkeyRegistrationFailed, LaunchAtLoginFailed, LoginWindowServiceFailed, SocketUnavailable,
                 HotkeyConflict, AppNotRunning>
        value;

    static AutomationError hotkeyRegistrationFailed(std::int32_t status) {
        return {HotkeyRegistrationFailed{status}};
    }
    static AutomationError launchAtLoginFailed(std::string reason) {
        return {LaunchAtLoginFailed{std::move(reason)}};
    }
    static AutomationError loginWindowServiceFailed(std::string reason) {
        return {LoginWindowServiceFailed{std::move(reason)}};
    }
    static AutomationError socketUnavailable(std::string reason) {
        return {SocketUnavailable{std::move(reason)}};
    }
    static AutomationError hotkeyConflict() { return {HotkeyConflict{}}; }
    static AutomationError appNotRunning() { return {AppNotRunning{}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const AutomationError&, const AutomationError&) = default;
};

/// Failures of exporting diagnostics.
struct DiagnosticsError {
    struct ExportFailed {
        std::string reason;
        friend bool operator==(const ExportFailed&, const ExportFailed&) = default;
    };

    std::variant<ExportFailed> value;

    static DiagnosticsError exportFailed(std::string reason) { return {ExportFailed{std::move(reason)}}; }

    [[nodiscard]] std::string description() const;
    friend bool operator==(const DiagnosticsError&, const DiagnosticsError&) = default;
};

}  // namespace screenweaver
