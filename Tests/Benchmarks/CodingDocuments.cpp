#include "CodingDocuments.hpp"

#include <chrono>
#include <fmt/format.h>

namespace screenweaver::benchmarks {

namespace {

UUID numberedID(std::uint32_t number, std::uint8_t kind) {
    UUID::Bytes bytes{};
    bytes[0] = kind;
    for (std::size_t index = 0; index < 4; ++index) {
        bytes[15 - index] = static_cast<std::uint8_t>(number >> (8 * index));
    }
    bytes[6] = 0x40;
    bytes[8] = 0x80;
    return UUID{bytes};
}

const DisplayRef& builtinPanel() {
    static const DisplayRef ref = DisplayRef::physical("37D8832A-2D66-02CA-B9F7-8F30A301B230");
    return ref;
}

const DisplayModeInfo panelMode{3024, 1964, 1512, 982, 120.0};

VirtualDisplaySpec spec(std::uint32_t number, std::string name, std::int64_t width, std::int64_t height,
                        double refreshRate, bool hiDPI) {
    return VirtualDisplaySpec{
        .id = numberedID(number, 2),
        .name = std::move(name),
        .catalogEntryID = number % 2 == 0 ? std::optional<std::string>{"lg-27uk850"} : std::nullopt,
        .pixelWidth = width,
        .pixelHeight = height,
        .refreshRate = refreshRate,
        .hiDPI = hiDPI,
        .rotation = 0,
        .dynamicRange = DynamicRange::standard,
        .targetPPIOverride = number % 4 == 3 ? std::optional<double>{163.18} : std::nullopt,
    };
}

// A group of the panel and `specs` side by side to its right, each in its own mode.
DisplayGroup group(std::uint32_t number, std::string name, std::string symbol,
                   std::vector<VirtualDisplaySpec> specs) {
    DisplayGroup group{
        .id = numberedID(number, 1),
        .name = std::move(name),
        .symbol = std::move(symbol),
        .mainDisplayRef = builtinPanel(),
        .includePhysicalDisplays = true,
        .protectedDisplays = {DisplayRef::physical(fmt::format("1552-4-{}", number))},
        .hotkey = KeyCombo{number % 50, 0x0900},
        .activateOnLaunch = number == 0,
        .extraDockSettings = ExtraDockSettings{ExtraDockMode::perDisplay, {builtinPanel()}, true},
        .modifiedAt = Date{std::chrono::seconds{1795000000 + number}},
    };
    group.layout[builtinPanel()] = Point{0.0, 0.0};
    group.modes[builtinPanel()] = panelMode;
    double x = 1512.0;
    for (const VirtualDisplaySpec& display : specs) {
        const DisplayRef ref = DisplayRef::virtualDisplay(display.id);
        const std::int64_t pointWidth = display.hiDPI ? display.pixelWidth / 2 : display.pixelWidth;
        const std::int64_t pointHeight = display.hiDPI ? display.pixelHeight / 2 : display.pixelHeight;
        group.layout[ref] = Point{x, -0.5 * static_cast<double>(group.layout.size() - 1)};
        group.modes[ref] = DisplayModeInfo{display.pixelWidth, display.pixelHeight, pointWidth, pointHeight,
                                           display.refreshRate};
        x += static_cast<double>(pointWidth);
    }
    group.displays = std::move(specs);
    return group;
}

}  // namespace

Config largeConfig() {
    Config config = Config::empty();
    for (std::uint32_t number = 0; number < 1000; ++number) {
        std::vector<VirtualDisplaySpec> specs;
        for (std::uint32_t display = 0; display < 4; ++display) {
            specs.push_back(spec(number * 4 + display, fmt::format("Virtual {}.{}", number, display), 3840,
                                 2160, display % 2 == 0 ? 60.0 : 59.94, true));
        }
        config.groups.push_back(
            group(number, fmt::format("Group {}", number), "rectangle.split.2x2", std::move(specs)));
    }
    config.activeGroupID = config.groups.front().id;
    config.deletedGroups[numberedID(99999, 3)] = Date{std::chrono::seconds{1790000000}};
    return config;
}

Config smallConfig() {
    Config config = Config::empty();
    config.groups.push_back(group(
        0, "Desk", "desktopcomputer",
        {spec(0, "Studio 27\"", 5120, 2880, 60.0, true), spec(1, "Ultrawide", 5120, 1440, 59.94, false)}));
    config.groups.push_back(
        group(1, "Travel", "airplane", {spec(2, "Portable 15\"", 1920, 1080, 60.0, false)}));
    DisplayGroup presentation = group(2, "Presentation", "videoprojector", {});
    presentation.hotkey.reset();
    presentation.extraDockSettings = ExtraDockSettings::defaults();
    config.groups.push_back(std::move(presentation));
    config.activeGroupID = config.groups.front().id;
    config.settings.lastUpdateCheckAt = Date{std::chrono::seconds{1795000000}};
    config.deletedGroups[numberedID(7, 3)] = Date{std::chrono::seconds{1790000000}};
    return config;
}

CLIRequest typicalRequest() {
    return CLIRequest::protectDisplay("physical:37D8832A-2D66-02CA-B9F7-8F30A301B230", true);
}

CLIReply typicalReply() {
    return CLIReply::displays({
        CLIDisplay{"physical:37D8832A-2D66-02CA-B9F7-8F30A301B230", "Built-in Retina Display", 3024, 1964,
                   1512, 982, 120.0, true, false, true},
        CLIDisplay{"virtual:02000000-0000-4000-8000-000000000000", "Studio 27\"", 5120, 2880, 2560, 1440,
                   60.0, false, true, false},
        CLIDisplay{"physical:1552-4-0", "LG HDR 4K", 3840, 2160, 1920, 1080, 59.94, false, false, false},
    });
}

}  // namespace screenweaver::benchmarks
