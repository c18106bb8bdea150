#include "ModelSamples.hpp"

namespace screenweaver::testing {

namespace {

UUID uuid(const char* text) {
    return *UUID::parse(text);
}

const UUID officeID = uuid("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
const UUID travelID = uuid("0B5A3C1D-7E2F-4A6B-8C9D-1E2F3A4B5C6D");
const UUID cinemaID = uuid("F00DFACE-0000-4000-8000-00000000CAFE");
const UUID ultrawideID = uuid("12345678-9ABC-DEF0-1234-56789ABCDEF0");
const UUID sidecarID = uuid("A1B2C3D4-E5F6-4789-ABCD-EF0123456789");
const UUID portraitID = uuid("00000000-0000-4000-8000-000000000001");

}  // namespace

Date utcDate(int year, unsigned month, unsigned day, int hour, int minute, int second, long microseconds) {
    using namespace std::chrono;
    return Date{sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}}} +
           hours{hour} + minutes{minute} + seconds{second} + std::chrono::microseconds{microseconds};
}

Config sampleConfig() {
    const DisplayRef builtin = DisplayRef::physical("37D8832A-2D66-02CA-B9F7-8F30A301B230");
    const DisplayRef external = DisplayRef::physical("1552-4-0:\"LG\"\\main");
    const DisplayRef ultrawide = DisplayRef::virtualDisplay(ultrawideID);
    const DisplayRef sidecar = DisplayRef::virtualDisplay(sidecarID);
    const DisplayRef portrait = DisplayRef::virtualDisplay(portraitID);

    DisplayGroup office{
        .id = officeID,
        .name = "Office",
        .symbol = "desktopcomputer",
        .displays = {VirtualDisplaySpec{.id = ultrawideID,
                                        .name = "Ultrawide 49\"",
                                        .catalogEntryID = "samsung-odyssey-g9",
                                        .pixelWidth = 5120,
                                        .pixelHeight = 1440,
                                        .refreshRate = 59.94,
                                        .hiDPI = false,
                                        .rotation = 0,
                                        .dynamicRange = DynamicRange::high,
                                        .targetPPIOverride = 108.79},
                     VirtualDisplaySpec{.id = sidecarID,
                                        .name = "Écran d’appoint",
                                        .pixelWidth = 2732,
                                        .pixelHeight = 2048,
                                        .refreshRate = 120.0,
                                        .hiDPI = true,
                                        .rotation = 90,
                                        .dynamicRange = DynamicRange::reference}},
        .mainDisplayRef = ultrawide,
        .layout = {{builtin, Point{-1512.0, 1440.0}},
                   {ultrawide, Point{0.0, 0.0}},
                   {sidecar, Point{2560.0, -0.5}}},
        .includePhysicalDisplays = true,
        .modes = {{ultrawide, DisplayModeInfo{5120, 1440, 2560, 720, 59.94}},
                  {builtin, DisplayModeInfo{3024, 1964, 1512, 982, 120.0}}},
        .protectedDisplays = {external, builtin},
        .hotkey = KeyCombo{18, 0x0900},
        .activateOnLaunch = true,
        .extraDockSettings = ExtraDockSettings{ExtraDockMode::perDisplay, {sidecar, ultrawide}, false},
        .modifiedAt = utcDate(2026, 11, 21, 9, 30, 0),
    };
    DisplayGroup travel{
        .id = travelID,
        .name = "Travel",
        .symbol = "airplane",
        .displays = {VirtualDisplaySpec{.id = portraitID,
                                        .name = "Portrait\tnotes",
                                        .pixelWidth = 1080,
                                        .pixelHeight = 1920,
                                        .refreshRate = 60.0,
                                        .hiDPI = false,
                                        .rotation = 270,
                                        .dynamicRange = DynamicRange::standard}},
        .mainDisplayRef = builtin,
        .layout = {{builtin, Point{0.0, 0.0}}, {portrait, Point{1512.0, 0.0}}},
        .includePhysicalDisplays = true,
        .modes = {},
        .protectedDisplays = {},
        .hotkey = std::nullopt,
        .activateOnLaunch = false,
        .extraDockSettings = ExtraDockSettings{ExtraDockMode::allDisplays, {}, true},
        .modifiedAt = utcDate(1999, 12, 31, 23, 59, 59, 250000),
    };
    DisplayGroup cinema{
        .id = cinemaID,
        .name = "Cinema",
        .symbol = "tv",
        .displays = {},
        .mainDisplayRef = external,
        .layout = {{external, Point{0.0, 0.0}}},
        .includePhysicalDisplays = false,
        .modes = {{external, DisplayModeInfo{3840, 2160, 3840, 2160, 23.976}}},
        .protectedDisplays = {builtin},
        .hotkey = KeyCombo{2, 0},
        .activateOnLaunch = false,
        .extraDockSettings = ExtraDockSettings::defaults(),
        .modifiedAt = utcDate(2026, 1, 2, 3, 4, 5, 6),
    };

    AppSettings settings{
        .launchAtLogin = true,
        .virtualDisplaysEnabled = false,
        .autoCaptureLayout = true,
        .showMenuBarLabel = true,
        .confirmBeforeSwitch = false,
        .interceptBrightnessKeys = true,
        .loginWindowService = LoginWindowServiceConsent::wanted,
        .automaticUpdateChecks = false,
        .lastUpdateCheckAt = utcDate(2026, 11, 20, 18, 0, 0, 123456),
        .skippedUpdateVersion = "2.4.1",
        .sleepDisplaysHotkey = KeyCombo{2, 0x1B00},
        .syncGroupsToICloud = false,
    };
    return Config{
        .schemaVersion = Config::currentSchemaVersion,
        .groups = {office, travel, cinema},
        .activeGroupID = officeID,
        .settings = settings,
        .deletedGroups = {{uuid("9F3E0B2A-1111-4222-8333-444455556666"), utcDate(2026, 10, 1, 12, 0, 0)},
                          {uuid("0A000000-0000-4000-8000-000000000000"),
                           utcDate(2025, 3, 4, 5, 6, 7, 890000)}},
    };
}

std::vector<CatalogEntry> sampleCatalog() {
    return {
        CatalogEntry{.id = "lg-27uk850",
                     .vendor = "LG",
                     .family = CatalogFamily::external,
                     .name = "UltraFine 27\" 4K",
                     .year = 2018,
                     .diagonalInches = 27.0,
                     .pixelWidth = 3840,
                     .pixelHeight = 2160,
                     .nativePPI = 163.18,
                     .refreshRates = {60.0, 59.94, 50.0},
                     .hiDPI = true,
                     .verified = true,
                     .notes = "USB-C with 60 W charging"},
        CatalogEntry{.id = "macbook-air-13-m2",
                     .vendor = "Apple",
                     .family = CatalogFamily::macbook,
                     .name = "MacBook Air 13.6-inch",
                     .year = 2022,
                     .diagonalInches = 13.6,
                     .pixelWidth = 2560,
                     .pixelHeight = 1664,
                     .nativePPI = 224.0,
                     .refreshRates = {60.0},
                     .hiDPI = true,
                     .verified = true},
        CatalogEntry{.id = "imac-24-4.5k",
                     .vendor = "Apple",
                     .family = CatalogFamily::iMac,
                     .name = "iMac 24-inch",
                     .pixelWidth = 4480,
                     .pixelHeight = 2520,
                     .refreshRates = {60.0},
                     .hiDPI = true,
                     .verified = false},
        CatalogEntry{.id = "ipad-pro-12.9",
                     .vendor = "Apple",
                     .family = CatalogFamily::iPad,
                     .name = "iPad Pro 12.9-inch",
                     .year = 2021,
                     .pixelWidth = 2732,
                     .pixelHeight = 2048,
                     .refreshRates = {120.0, 60.0},
                     .hiDPI = true,
                     .verified = true},
        CatalogEntry{.id = "fhd",
                     .vendor = "Generic",
                     .family = CatalogFamily::common,
                     .name = "Full HD",
                     .pixelWidth = 1920,
                     .pixelHeight = 1080,
                     .refreshRates = {},
                     .hiDPI = false,
                     .verified = false,
                     .notes = ""},
    };
}

std::vector<std::pair<std::string, CLIRequest>> sampleRequests() {
    return {
        {"request-list", CLIRequest::list()},
        {"request-activate", CLIRequest::activate("Office")},
        {"request-deactivate", CLIRequest::deactivate()},
        {"request-capture", CLIRequest::capture("Travel")},
        {"request-capture-without-group", CLIRequest::capture(std::nullopt)},
        {"request-status", CLIRequest::status()},
        {"request-displays", CLIRequest::displays()},
        {"request-displayEDID", CLIRequest::displayEDID("physical:1552-4-0")},
        {"request-protectDisplay",
         CLIRequest::protectDisplay("virtual:12345678-9ABC-DEF0-1234-56789ABCDEF0", true)},
    };
}

std::vector<std::pair<std::string, CLIReply>> sampleReplies() {
    return {
        {"reply-ok", CLIReply::ok("Activated \"Office\".")},
        {"reply-status", CLIReply::status(CLIStatus{.appVersion = "2.5.0",
                                                    .activeGroupName = "Office",
                                                    .groupNames = {"Office", "Travel", "Cinema"},
                                                    .stateDescription = "active: Office",
                                                    .cloudSync = "up to date",
                                                    .loginWindowService = "running"})},
        {"reply-status-minimal", CLIReply::status(CLIStatus{.groupNames = {}, .stateDescription = "idle"})},
        {"reply-groups", CLIReply::groups({"Office", "Travel", "Cinema"})},
        {"reply-groups-empty", CLIReply::groups({})},
        {"reply-displays",
         CLIReply::displays({CLIDisplay{.ref = "physical:37D8832A-2D66-02CA-B9F7-8F30A301B230",
                                        .name = "Built-in Retina Display",
                                        .pixelWidth = 3024,
                                        .pixelHeight = 1964,
                                        .pointWidth = 1512,
                                        .pointHeight = 982,
                                        .refreshRate = 120.0,
                                        .isMain = false,
                                        .isVirtual = false,
                                        .isBuiltin = true},
                             CLIDisplay{.ref = "physical:5357-1-4E7153E5",
                                        .pixelWidth = 5120,
                                        .pixelHeight = 1440,
                                        .pointWidth = 5120,
                                        .pointHeight = 1440,
                                        .refreshRate = 59.94,
                                        .isMain = true,
                                        .isVirtual = true,
                                        .isBuiltin = false}})},
        {"reply-edid",
         CLIReply::edid(CLIDisplayEDID{.ref = "physical:1552-4-0",
                                       .summary = DisplayEDIDSummary{.manufacturerCode = "GSM",
                                                                     .vendorNumber = 7789,
                                                                     .modelNumber = 23305,
                                                                     .serialNumber = 4294967295U,
                                                                     .productName = "LG HDR 4K",
                                                                     .weekOfManufacture = 12,
                                                                     .yearOfManufacture = 2021,
                                                                     .nativePixelWidth = 3840,
                                                                     .nativePixelHeight = 2160},
                                       .source = CLIDisplayEDID::Source::panel,
                                       .isVirtual = false})},
        {"reply-edid-system",
         CLIReply::edid(CLIDisplayEDID{
             .ref = "virtual:12345678-9ABC-DEF0-1234-56789ABCDEF0",
             .summary =
                 DisplayEDIDSummary{.vendorNumber = 21335, .modelNumber = 1, .serialNumber = 1316049893},
             .source = CLIDisplayEDID::Source::system,
             .isVirtual = true})},
        {"reply-error", CLIReply::error("no group named \"Gaming\"")},
    };
}

}  // namespace screenweaver::testing
