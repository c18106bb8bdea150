#include "RandomModelValues.hpp"

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace screenweaver::testing {

std::int64_t RandomModelValues::integer() {
    switch (below(3)) {
        case 0:
            return static_cast<std::int64_t>(below(4000));
        case 1:
            return -static_cast<std::int64_t>(below(4000));
        default:
            return std::uniform_int_distribution<std::int64_t>{
                std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}(engine_);
    }
}

std::uint32_t RandomModelValues::unsignedNumber() {
    return std::uniform_int_distribution<std::uint32_t>{0,
                                                        std::numeric_limits<std::uint32_t>::max()}(engine_);
}

double RandomModelValues::number() {
    switch (below(4)) {
        case 0:
            return static_cast<double>(integer() % 10000) / 8.0;
        case 1:
            return std::uniform_real_distribution<double>{-1e6, 1e6}(engine_);
        default: {
            // Any finite bit pattern: subnormals, huge magnitudes, negative zero.
            for (;;) {
                const double value = std::bit_cast<double>(engine_());
                if (std::isfinite(value)) {
                    return value;
                }
            }
        }
    }
}

bool RandomModelValues::flag() {
    return below(2) == 1;
}

std::string RandomModelValues::text() {
    static const std::array<std::string, 12> pieces{
        "a", "Z", " ", "\"", "\\", "/", "\n", std::string{"\0", 1}, "\x1F", "é", "—", "\xF0\x9F\x96\xA5"};
    std::string result;
    const std::size_t length = below(10);
    for (std::size_t index = 0; index < length; ++index) {
        if (below(3) == 0) {
            result += pieces[below(pieces.size())];
        } else {
            result += static_cast<char>(0x20 + below(0x5F));
        }
    }
    return result;
}

UUID RandomModelValues::uuid() {
    UUID::Bytes bytes{};
    for (auto& byte : bytes) {
        byte = static_cast<std::uint8_t>(below(256));
    }
    return UUID{bytes};
}

Date RandomModelValues::date() {
    // From 0000-01-01T00:00:00Z to 9999-12-31T23:59:59.999999Z.
    constexpr std::int64_t first = -62167219200000000;
    constexpr std::int64_t last = 253402300799999999;
    std::int64_t micros = std::uniform_int_distribution<std::int64_t>{first, last}(engine_);
    if (flag()) {
        micros -= micros % 1000000;
    }
    return Date{std::chrono::microseconds{micros}};
}

DisplayRef RandomModelValues::ref() {
    return flag() ? DisplayRef::virtualDisplay(uuid()) : DisplayRef::physical(text());
}

Point RandomModelValues::point() {
    return Point{number(), number()};
}

KeyCombo RandomModelValues::keyCombo() {
    return KeyCombo{unsignedNumber(), unsignedNumber()};
}

DisplayModeInfo RandomModelValues::mode() {
    return DisplayModeInfo{integer(), integer(), integer(), integer(), number()};
}

VirtualDisplaySpec RandomModelValues::spec() {
    return VirtualDisplaySpec{
        .id = uuid(),
        .name = text(),
        .catalogEntryID = maybe([this] { return text(); }),
        .pixelWidth = integer(),
        .pixelHeight = integer(),
        .refreshRate = number(),
        .hiDPI = flag(),
        .rotation = integer(),
        .dynamicRange = static_cast<DynamicRange>(below(3)),
        .targetPPIOverride = maybe([this] { return number(); }),
    };
}

ExtraDockSettings RandomModelValues::extraDockSettings() {
    const auto refs = several(3, [this] { return ref(); });
    return ExtraDockSettings{static_cast<ExtraDockMode>(below(3)), {refs.begin(), refs.end()}, flag()};
}

DisplayGroup RandomModelValues::group() {
    DisplayGroup value{
        .id = uuid(),
        .name = text(),
        .symbol = text(),
        .displays = several(3, [this] { return spec(); }),
        .mainDisplayRef = ref(),
        .includePhysicalDisplays = flag(),
        .hotkey = maybe([this] { return keyCombo(); }),
        .activateOnLaunch = flag(),
        .extraDockSettings = extraDockSettings(),
        .modifiedAt = date(),
    };
    for (std::size_t count = below(4); count > 0; --count) {
        value.layout[ref()] = point();
    }
    for (std::size_t count = below(3); count > 0; --count) {
        value.modes[ref()] = mode();
    }
    for (std::size_t count = below(3); count > 0; --count) {
        value.protectedDisplays.insert(ref());
    }
    return value;
}

AppSettings RandomModelValues::settings() {
    return AppSettings{
        .launchAtLogin = flag(),
        .virtualDisplaysEnabled = flag(),
        .autoCaptureLayout = flag(),
        .showMenuBarLabel = flag(),
        .confirmBeforeSwitch = flag(),
        .interceptBrightnessKeys = flag(),
        .loginWindowService = static_cast<LoginWindowServiceConsent>(below(3)),
        .automaticUpdateChecks = flag(),
        .lastUpdateCheckAt = maybe([this] { return date(); }),
        .skippedUpdateVersion = maybe([this] { return text(); }),
        .sleepDisplaysHotkey = maybe([this] { return keyCombo(); }),
        .syncGroupsToICloud = flag(),
    };
}

Config RandomModelValues::config() {
    Config value{
        .schemaVersion = integer(),
        .groups = several(3, [this] { return group(); }),
        .activeGroupID = maybe([this] { return uuid(); }),
        .settings = settings(),
    };
    for (std::size_t count = below(3); count > 0; --count) {
        value.deletedGroups[uuid()] = date();
    }
    return value;
}

CatalogEntry RandomModelValues::catalogEntry() {
    return CatalogEntry{
        .id = text(),
        .vendor = text(),
        .family = static_cast<CatalogFamily>(below(5)),
        .name = text(),
        .year = maybe([this] { return integer(); }),
        .diagonalInches = maybe([this] { return number(); }),
        .pixelWidth = integer(),
        .pixelHeight = integer(),
        .nativePPI = maybe([this] { return number(); }),
        .refreshRates = several(4, [this] { return number(); }),
        .hiDPI = flag(),
        .verified = flag(),
        .notes = maybe([this] { return text(); }),
    };
}

DisplayEDIDSummary RandomModelValues::edidSummary() {
    return DisplayEDIDSummary{
        .manufacturerCode = maybe([this] { return text(); }),
        .vendorNumber = unsignedNumber(),
        .modelNumber = unsignedNumber(),
        .serialNumber = unsignedNumber(),
        .productName = maybe([this] { return text(); }),
        .weekOfManufacture = maybe([this] { return integer(); }),
        .yearOfManufacture = maybe([this] { return integer(); }),
        .nativePixelWidth = maybe([this] { return integer(); }),
        .nativePixelHeight = maybe([this] { return integer(); }),
    };
}

CLIDisplay RandomModelValues::cliDisplay() {
    return CLIDisplay{
        .ref = text(),
        .name = maybe([this] { return text(); }),
        .pixelWidth = integer(),
        .pixelHeight = integer(),
        .pointWidth = integer(),
        .pointHeight = integer(),
        .refreshRate = number(),
        .isMain = flag(),
        .isVirtual = flag(),
        .isBuiltin = flag(),
    };
}

CLIStatus RandomModelValues::cliStatus() {
    return CLIStatus{
        .appVersion = maybe([this] { return text(); }),
        .activeGroupName = maybe([this] { return text(); }),
        .groupNames = several(3, [this] { return text(); }),
        .stateDescription = text(),
        .cloudSync = maybe([this] { return text(); }),
        .loginWindowService = maybe([this] { return text(); }),
    };
}

CLIDisplayEDID RandomModelValues::cliDisplayEDID() {
    return CLIDisplayEDID{
        .ref = text(),
        .summary = edidSummary(),
        .source = flag() ? CLIDisplayEDID::Source::panel : CLIDisplayEDID::Source::system,
        .isVirtual = flag(),
    };
}

CLIRequest RandomModelValues::request() {
    switch (below(8)) {
        case 0:
            return CLIRequest::list();
        case 1:
            return CLIRequest::activate(text());
        case 2:
            return CLIRequest::deactivate();
        case 3:
            return CLIRequest::capture(maybe([this] { return text(); }));
        case 4:
            return CLIRequest::status();
        case 5:
            return CLIRequest::displays();
        case 6:
            return CLIRequest::displayEDID(text());
        default:
            return CLIRequest::protectDisplay(text(), flag());
    }
}

CLIReply RandomModelValues::reply() {
    switch (below(6)) {
        case 0:
            return CLIReply::ok(text());
        case 1:
            return CLIReply::status(cliStatus());
        case 2:
            return CLIReply::groups(several(3, [this] { return text(); }));
        case 3:
            return CLIReply::displays(several(3, [this] { return cliDisplay(); }));
        case 4:
            return CLIReply::edid(cliDisplayEDID());
        default:
            return CLIReply::error(text());
    }
}

}  // namespace screenweaver::testing
