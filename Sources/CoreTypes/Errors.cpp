#include "CoreTypes/Errors.hpp"

#include "CoreTypes/Overloaded.hpp"
#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

namespace {

using text::CaseDescription;

std::string bare(std::string_view caseName) {
    return CaseDescription{caseName}.str();
}

std::string withReason(std::string_view caseName, std::string_view reason) {
    return CaseDescription{caseName}.string("reason", reason).str();
}

std::string unlabelled(std::string_view caseName, std::string_view message) {
    return CaseDescription{caseName}.string("", message).str();
}

// Another of our enums inside a payload is written qualified with its module and type.
std::string qualified(std::string_view type, std::string_view valueText) {
    return "CoreTypes." + std::string{type} + "." + std::string{valueText};
}

}  // namespace

std::string DisplayError::description() const {
    return std::visit(
        Overloaded{
            [](const ModeListUnavailable& error) {
                return CaseDescription{"modeListUnavailable"}
                    .unsignedInteger("displayID", error.displayID)
                    .str();
            },
            [](const ConfigurationFailed& error) { return withReason("configurationFailed", error.reason); },
            [](const InvalidLayout& error) { return withReason("invalidLayout", error.reason); },
            [](const DisplayNotFound& error) {
                return CaseDescription{"displayNotFound"}
                    .rendered("", qualified("DisplayRef", error.ref.description()))
                    .str();
            },
            [](const DisplaySleepFailed& error) { return withReason("displaySleepFailed", error.reason); },
            [](const EnumerationFailed&) { return bare("enumerationFailed"); },
            [](const WouldLeaveZeroDisplays&) { return bare("wouldLeaveZeroDisplays"); },
        },
        value);
}

std::string VirtualDisplayError::description() const {
    return std::visit(
        Overloaded{
            [](const ApiUnavailable& error) { return withReason("apiUnavailable", error.reason); },
            [](const UnsupportedOSVersion& error) {
                return withReason("unsupportedOSVersion", error.reason);
            },
            [](const InvalidSpec& error) { return withReason("invalidSpec", error.reason); },
            [](const CreationFailed& error) { return withReason("creationFailed", error.reason); },
            [](const NotActiveAfterCreation&) { return bare("notActiveAfterCreation"); },
            [](const ConfigurationRejected&) { return bare("configurationRejected"); },
            [](const DisabledByKillSwitch&) { return bare("disabledByKillSwitch"); },
        },
        value);
}

std::string GroupActivationError::description() const {
    return std::visit(
        Overloaded{
            [](const VirtualDisplayFailed& error) {
                return unlabelled("virtualDisplayFailed", error.message);
            },
            [](const ArrangementFailed& error) { return unlabelled("arrangementFailed", error.message); },
            [](const RollbackFailed& error) { return unlabelled("rollbackFailed", error.message); },
            [](const GroupNotFound& error) {
                return CaseDescription{"groupNotFound"}.rendered("", error.groupID.uuidString()).str();
            },
            [](const WouldLeaveZeroDisplays&) { return bare("wouldLeaveZeroDisplays"); },
            [](const VirtualDisplaysDisabled&) { return bare("virtualDisplaysDisabled"); },
            [](const Cancelled&) { return bare("cancelled"); },
            [](const EngineBusy&) { return bare("engineBusy"); },
        },
        value);
}

std::string PersistenceError::description() const {
    return std::visit(
        Overloaded{
            [](const Unreadable& error) { return withReason("unreadable", error.reason); },
            [](const CorruptedPrimary& error) {
                return CaseDescription{"corruptedPrimary"}
                    .boolean("recoveredFromBackup", error.recoveredFromBackup)
                    .str();
            },
            [](const WriteFailed& error) { return withReason("writeFailed", error.reason); },
            [](const MigrationFailed& error) {
                return CaseDescription{"migrationFailed"}
                    .integer("from", error.from)
                    .integer("to", error.to)
                    .string("reason", error.reason)
                    .str();
            },
            [](const UnsupportedSchemaVersion& error) {
                return CaseDescription{"unsupportedSchemaVersion"}.integer("", error.version).str();
            },
        },
        value);
}

std::string DDCError::description() const {
    return std::visit(
        Overloaded{
            [](const ReadFailed& error) {
                return CaseDescription{"readFailed"}
                    .rendered("control", qualified("DDCControl", caseName(error.control)))
                    .str();
            },
            [](const WriteFailed& error) {
                return CaseDescription{"writeFailed"}
                    .rendered("control", qualified("DDCControl", caseName(error.control)))
                    .str();
            },
            [](const Unsupported&) { return bare("unsupported"); },
            [](const ServiceUnavailable&) { return bare("serviceUnavailable"); },
            [](const SoftwareBrightnessUnavailable&) { return bare("softwareBrightnessUnavailable"); },
        },
        value);
}

std::string CatalogError::description() const {
    return std::visit(Overloaded{
                          [](const InvalidJSON& error) { return withReason("invalidJSON", error.reason); },
                          [](const BundledCatalogMissing&) { return bare("bundledCatalogMissing"); },
                      },
                      value);
}

std::string AutomationError::description() const {
    return std::visit(
        Overloaded{
            [](const HotkeyRegistrationFailed& error) {
                return CaseDescription{"hotkeyRegistrationFailed"}.integer("status", error.status).str();
            },
            [](const LaunchAtLoginFailed& error) { return withReason("launchAtLoginFailed", error.reason); },
            [](const LoginWindowServiceFailed& error) {
                return withReason("loginWindowServiceFailed", error.reason);
            },
            [](const SocketUnavailable& error) { return withReason("socketUnavailable", error.reason); },
            [](const HotkeyConflict&) { return bare("hotkeyConflict"); },
            [](const AppNotRunning&) { return bare("appNotRunning"); },
        },
        value);
}

std::string DiagnosticsError::description() const {
    return std::visit(
        Overloaded{
            [](const ExportFailed& error) { return withReason("exportFailed", error.reason); },
        },
        value);
}

}  // namespace screenweaver
