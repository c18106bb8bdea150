#include <expected>
#include <gtest/gtest.h>

#include "CoreTypes/Errors.hpp"

namespace screenweaver {
namespace {

const UUID groupID = *UUID::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");

TEST(DisplayError, RendersEveryCaseInItsTextualForm) {
    EXPECT_EQ(DisplayError::modeListUnavailable(7).description(), "modeListUnavailable(displayID: 7)");
    EXPECT_EQ(DisplayError::configurationFailed("CGBeginDisplayConfiguration failed").description(),
              R"(configurationFailed(reason: "CGBeginDisplayConfiguration failed"))");
    EXPECT_EQ(DisplayError::invalidLayout("displays 1 and 2 overlap").description(),
              R"(invalidLayout(reason: "displays 1 and 2 overlap"))");
    EXPECT_EQ(DisplayError::displayNotFound(DisplayRef::physical("1552-4-0")).description(),
              R"(displayNotFound(CoreTypes.DisplayRef.physical(colorSyncUUID: "1552-4-0")))");
    EXPECT_EQ(DisplayError::displayNotFound(
                  DisplayRef::virtualDisplay(*UUID::parse("12345678-9abc-def0-1234-56789abcdef0")))
                  .description(),
              "displayNotFound(CoreTypes.DisplayRef.virtual(12345678-9ABC-DEF0-1234-56789ABCDEF0))");
    EXPECT_EQ(DisplayError::displaySleepFailed("/usr/bin/pmset exited 1").description(),
              R"(displaySleepFailed(reason: "/usr/bin/pmset exited 1"))");
    EXPECT_EQ(DisplayError::enumerationFailed().description(), "enumerationFailed");
    EXPECT_EQ(DisplayError::wouldLeaveZeroDisplays().description(), "wouldLeaveZeroDisplays");
}

TEST(VirtualDisplayError, RendersEveryCaseInItsTextualForm) {
    EXPECT_EQ(VirtualDisplayError::apiUnavailable("gone").description(), R"(apiUnavailable(reason: "gone"))");
    EXPECT_EQ(
        VirtualDisplayError::unsupportedOSVersion("Virtual displays need macOS 14 or later.").description(),
        R"(unsupportedOSVersion(reason: "Virtual displays need macOS 14 or later."))");
    EXPECT_EQ(VirtualDisplayError::invalidSpec("rotation must be 0, 90, 180 or 270 degrees").description(),
              R"(invalidSpec(reason: "rotation must be 0, 90, 180 or 270 degrees"))");
    EXPECT_EQ(
        VirtualDisplayError::creationFailed("the display interface assigned no display ID").description(),
        R"(creationFailed(reason: "the display interface assigned no display ID"))");
    EXPECT_EQ(VirtualDisplayError::notActiveAfterCreation().description(), "notActiveAfterCreation");
    EXPECT_EQ(VirtualDisplayError::configurationRejected().description(), "configurationRejected");
    EXPECT_EQ(VirtualDisplayError::disabledByKillSwitch().description(), "disabledByKillSwitch");
}

TEST(GroupActivationError, RendersEveryCaseInItsTextualForm) {
    EXPECT_EQ(GroupActivationError::virtualDisplayFailed("x").description(), R"(virtualDisplayFailed("x"))");
    EXPECT_EQ(GroupActivationError::arrangementFailed("y").description(), R"(arrangementFailed("y"))");
    EXPECT_EQ(GroupActivationError::rollbackFailed("z").description(), R"(rollbackFailed("z"))");
    EXPECT_EQ(GroupActivationError::groupNotFound(groupID).description(),
              "groupNotFound(E621E1F8-C36C-495A-93FC-0C247A3E6E5F)");
    EXPECT_EQ(GroupActivationError::wouldLeaveZeroDisplays().description(), "wouldLeaveZeroDisplays");
    EXPECT_EQ(GroupActivationError::virtualDisplaysDisabled().description(), "virtualDisplaysDisabled");
    EXPECT_EQ(GroupActivationError::cancelled().description(), "cancelled");
    EXPECT_EQ(GroupActivationError::engineBusy().description(), "engineBusy");
}

TEST(PersistenceError, RendersEveryCaseInItsTextualForm) {
    EXPECT_EQ(PersistenceError::unreadable("no access").description(), R"(unreadable(reason: "no access"))");
    EXPECT_EQ(PersistenceError::corruptedPrimary(true).description(),
              "corruptedPrimary(recoveredFromBackup: true)");
    EXPECT_EQ(PersistenceError::corruptedPrimary(false).description(),
              "corruptedPrimary(recoveredFromBackup: false)");
    EXPECT_EQ(PersistenceError::writeFailed("disk full").description(),
              R"(writeFailed(reason: "disk full"))");
    EXPECT_EQ(PersistenceError::migrationFailed(3, 4, "x").description(),
              R"(migrationFailed(from: 3, to: 4, reason: "x"))");
    EXPECT_EQ(PersistenceError::unsupportedSchemaVersion(7).description(), "unsupportedSchemaVersion(7)");
    EXPECT_EQ(PersistenceError::unsupportedSchemaVersion(-1).description(), "unsupportedSchemaVersion(-1)");
}

TEST(DDCError, RendersTheControlQualifiedWithModuleAndType) {
    EXPECT_EQ(DDCError::readFailed(DDCControl::brightness).description(),
              "readFailed(control: CoreTypes.DDCControl.brightness)");
    EXPECT_EQ(DDCError::writeFailed(DDCControl::inputSource).description(),
              "writeFailed(control: CoreTypes.DDCControl.inputSource)");
    EXPECT_EQ(DDCError::unsupported().description(), "unsupported");
    EXPECT_EQ(DDCError::serviceUnavailable().description(), "serviceUnavailable");
    EXPECT_EQ(DDCError::softwareBrightnessUnavailable().description(), "softwareBrightnessUnavailable");
}

TEST(CatalogAutomationAndDiagnosticsErrors, RenderEveryCaseInTheirTextualForm) {
    EXPECT_EQ(CatalogError::invalidJSON("bad").description(), R"(invalidJSON(reason: "bad"))");
    EXPECT_EQ(CatalogError::bundledCatalogMissing().description(), "bundledCatalogMissing");
    EXPECT_EQ(AutomationError::hotkeyRegistrationFailed(-9878).description(),
              "hotkeyRegistrationFailed(status: -9878)");
    EXPECT_EQ(AutomationError::launchAtLoginFailed("a").description(), R"(launchAtLoginFailed(reason: "a"))");
    EXPECT_EQ(AutomationError::loginWindowServiceFailed("b").description(),
              R"(loginWindowServiceFailed(reason: "b"))");
    EXPECT_EQ(AutomationError::socketUnavailable("c").description(), R"(socketUnavailable(reason: "c"))");
    EXPECT_EQ(AutomationError::hotkeyConflict().description(), "hotkeyConflict");
    EXPECT_EQ(AutomationError::appNotRunning().description(), "appNotRunning");
    EXPECT_EQ(DiagnosticsError::exportFailed("d").description(), R"(exportFailed(reason: "d"))");
}

TEST(ErrorDescription, EscapesQuoteBackslashLineFeedAndOtherControlCharactersInReasons) {
    EXPECT_EQ(VirtualDisplayError::creationFailed("a \"quoted\" word").description(),
              R"(creationFailed(reason: "a \"quoted\" word"))");
    EXPECT_EQ(VirtualDisplayError::creationFailed(R"(C:\path)").description(),
              R"(creationFailed(reason: "C:\\path"))");
    EXPECT_EQ(DisplayError::invalidLayout("two\nlines").description(),
              R"(invalidLayout(reason: "two\nlines"))");
    EXPECT_EQ(DisplayError::invalidLayout("bell\a").description(), R"(invalidLayout(reason: "bell\u{07}"))");
    EXPECT_EQ(GroupActivationError::arrangementFailed("tab\there").description(),
              R"(arrangementFailed("tab\there"))");
    EXPECT_EQ(DisplayError::displayNotFound(DisplayRef::physical("odd\"id")).description(),
              R"(displayNotFound(CoreTypes.DisplayRef.physical(colorSyncUUID: "odd\"id")))");
}

TEST(DisplayError, InvalidLayoutValuesAreEqualExactlyWhenTheirReasonsAre) {
    EXPECT_EQ(DisplayError::invalidLayout("a"), DisplayError::invalidLayout("a"));
    EXPECT_NE(DisplayError::invalidLayout("a"), DisplayError::invalidLayout("b"));
    EXPECT_NE(DisplayError::invalidLayout("a"), DisplayError::configurationFailed("a"));
}

TEST(PersistenceError, MigrationFailedComparesAllThreeValues) {
    EXPECT_EQ(PersistenceError::migrationFailed(3, 4, "x"), PersistenceError::migrationFailed(3, 4, "x"));
    EXPECT_NE(PersistenceError::migrationFailed(3, 4, "x"), PersistenceError::migrationFailed(2, 4, "x"));
    EXPECT_NE(PersistenceError::migrationFailed(3, 4, "x"), PersistenceError::migrationFailed(3, 5, "x"));
    EXPECT_NE(PersistenceError::migrationFailed(3, 4, "x"), PersistenceError::migrationFailed(3, 4, "y"));
}

TEST(ErrorEnums, ServeAsTheErrorOfAnExpected) {
    const std::expected<int, VirtualDisplayError> failed =
        std::unexpected(VirtualDisplayError::configurationRejected());
    ASSERT_FALSE(failed.has_value());
    EXPECT_EQ(failed.error(), VirtualDisplayError::configurationRejected());
    const std::expected<void, DisplayError> succeeded{};
    EXPECT_TRUE(succeeded.has_value());
}

TEST(ErrorEnums, ListTheirCasesInDeclarationOrder) {
    EXPECT_EQ(DisplayError::modeListUnavailable(0).value.index(), 0U);
    EXPECT_EQ(DisplayError::wouldLeaveZeroDisplays().value.index(), 6U);
    EXPECT_EQ(VirtualDisplayError::disabledByKillSwitch().value.index(), 6U);
    EXPECT_EQ(GroupActivationError::engineBusy().value.index(), 7U);
    EXPECT_EQ(PersistenceError::unsupportedSchemaVersion(1).value.index(), 4U);
    EXPECT_EQ(DDCError::softwareBrightnessUnavailable().value.index(), 4U);
    EXPECT_EQ(CatalogError::bundledCatalogMissing().value.index(), 1U);
    EXPECT_EQ(AutomationError::appNotRunning().value.index(), 5U);
    EXPECT_EQ(DiagnosticsError::exportFailed("").value.index(), 0U);
}

}  // namespace
}  // namespace screenweaver
