// Typed decoding and encoding of a large configuration document, beside the raw parse of the
// same text. Compare typed decoding with the raw parse as a ratio taken from one run.

#include <simdjson.h>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fmt/format.h>

#include "CoreTypes/Coding/JSONCoding.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"

namespace screenweaver {
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

// 1,000 groups of 4 virtual displays each, every group with a layout and modes for its displays
// and the built-in panel, a protected display, a hot key and per-display Docks.
Config largeConfig() {
    const DisplayRef builtin = DisplayRef::physical("37D8832A-2D66-02CA-B9F7-8F30A301B230");
    Config config = Config::empty();
    for (std::uint32_t groupNumber = 0; groupNumber < 1000; ++groupNumber) {
        DisplayGroup group{
            .id = numberedID(groupNumber, 1),
            .name = fmt::format("Group {}", groupNumber),
            .symbol = "rectangle.split.2x2",
            .mainDisplayRef = builtin,
            .includePhysicalDisplays = true,
            .protectedDisplays = {DisplayRef::physical(fmt::format("1552-4-{}", groupNumber))},
            .hotkey = KeyCombo{groupNumber % 50, 0x0900},
            .activateOnLaunch = groupNumber == 0,
            .extraDockSettings = ExtraDockSettings{ExtraDockMode::perDisplay, {builtin}, true},
            .modifiedAt = Date{std::chrono::seconds{1795000000 + groupNumber}},
        };
        group.layout[builtin] = Point{0.0, 0.0};
        group.modes[builtin] = DisplayModeInfo{3024, 1964, 1512, 982, 120.0};
        for (std::uint32_t displayNumber = 0; displayNumber < 4; ++displayNumber) {
            const VirtualDisplaySpec spec{
                .id = numberedID(groupNumber * 4 + displayNumber, 2),
                .name = fmt::format("Virtual {}.{}", groupNumber, displayNumber),
                .catalogEntryID =
                    displayNumber % 2 == 0 ? std::optional<std::string>{"lg-27uk850"} : std::nullopt,
                .pixelWidth = 3840,
                .pixelHeight = 2160,
                .refreshRate = displayNumber % 2 == 0 ? 60.0 : 59.94,
                .hiDPI = true,
                .rotation = 0,
                .dynamicRange = DynamicRange::standard,
                .targetPPIOverride = displayNumber == 3 ? std::optional<double>{163.18} : std::nullopt,
            };
            const DisplayRef ref = DisplayRef::virtualDisplay(spec.id);
            group.layout[ref] = Point{1512.0 + 1920.0 * displayNumber, -0.5 * displayNumber};
            group.modes[ref] = DisplayModeInfo{3840, 2160, 1920, 1080, spec.refreshRate};
            group.displays.push_back(spec);
        }
        config.groups.push_back(std::move(group));
    }
    config.activeGroupID = config.groups.front().id;
    config.deletedGroups[numberedID(99999, 3)] = Date{std::chrono::seconds{1790000000}};
    return config;
}

const Config& document() {
    static const Config config = largeConfig();
    return config;
}

const std::string& documentText() {
    static const std::string text = *encode(document());
    return text;
}

void TypedDecode(benchmark::State& state) {
    const std::string& text = documentText();
    for (auto _ : state) {
        auto config = decode<Config>(text);
        if (!config) {
            state.SkipWithError("decoding failed");
            return;
        }
        benchmark::DoNotOptimize(config);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void TypedEncode(benchmark::State& state) {
    const Config& config = document();
    std::size_t bytes = 0;
    for (auto _ : state) {
        auto text = encode(config);
        bytes = text->size();
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

// The parse alone, into simdjson's document, with the parser and padded text kept between runs.
void RawParse(benchmark::State& state) {
    const simdjson::padded_string text{documentText()};
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(text).get(root) != simdjson::SUCCESS) {
            state.SkipWithError("parsing failed");
            return;
        }
        benchmark::DoNotOptimize(root);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

BENCHMARK(RawParse)->Unit(benchmark::kMillisecond);
BENCHMARK(TypedDecode)->Unit(benchmark::kMillisecond);
BENCHMARK(TypedEncode)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace screenweaver

BENCHMARK_MAIN();
