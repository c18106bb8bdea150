#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "CoreTypes/Model/CLIReply.hpp"
#include "CoreTypes/Model/CLIRequest.hpp"
#include "CoreTypes/Model/CatalogEntry.hpp"
#include "CoreTypes/Model/Config.hpp"

namespace screenweaver::testing {

/// Values of every type with a JSON form, drawn from a seeded engine so that a failure repeats:
/// full-range integers, finite doubles of every magnitude, text with control characters and
/// non-ASCII letters, dates across the four-digit years.
class RandomModelValues {
public:
    explicit RandomModelValues(std::uint64_t seed) : engine_(seed) {}

    std::int64_t integer();
    std::uint32_t unsignedNumber();
    double number();
    bool flag();
    std::string text();
    UUID uuid();
    Date date();
    DisplayRef ref();
    Point point();
    KeyCombo keyCombo();
    DisplayModeInfo mode();
    VirtualDisplaySpec spec();
    ExtraDockSettings extraDockSettings();
    DisplayGroup group();
    AppSettings settings();
    Config config();
    CatalogEntry catalogEntry();
    DisplayEDIDSummary edidSummary();
    CLIDisplay cliDisplay();
    CLIStatus cliStatus();
    CLIDisplayEDID cliDisplayEDID();
    CLIRequest request();
    CLIReply reply();

private:
    std::size_t below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>{0, bound - 1}(engine_);
    }

    template <class Make>
    auto maybe(Make make) -> std::optional<decltype(make())> {
        if (flag()) {
            return make();
        }
        return std::nullopt;
    }

    template <class Make>
    auto several(std::size_t most, Make make) -> std::vector<decltype(make())> {
        std::vector<decltype(make())> values;
        const std::size_t count = below(most + 1);
        for (std::size_t index = 0; index < count; ++index) {
            values.push_back(make());
        }
        return values;
    }

    std::mt19937_64 engine_;
};

}  // namespace screenweaver::testing
