// JSON coding beside the parsers a C++ program would otherwise use, on the same texts in the same
// run: the 1,000-group configuration document, a typical small one, and a request and a reply of
// the control protocol. For each text: simdjson's DOM parse alone (the floor a typed decode stands
// on), Boost.JSON's parse and serialise of the same document, and our typed decode and encode. Each
// is measured five times, and the table at the end gives the medians and their ratios from this one
// run: a neighbour's burst on a shared machine then moves one measurement, not the table.

#include <simdjson.h>

#include <array>
#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <fmt/format.h>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "AllocationCount.hpp"
#include "CodingDocuments.hpp"
#include "CoreTypes/Coding/JSONCoding.hpp"
#include "CoreTypes/Model/CLIReplyJSON.hpp"
#include "CoreTypes/Model/CLIRequestJSON.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"

namespace screenweaver {
namespace {

// The texts, in the columns' order.
constexpr std::array<std::string_view, 4> textNames{"large", "small", "request", "reply"};

// The measures, in the rows' order.
constexpr std::string_view simdjsonParse = "simdjson DOM parse";
constexpr std::string_view boostParse = "Boost.JSON parse";
constexpr std::string_view boostSerialise = "Boost.JSON serialise";
constexpr std::string_view typedDecode = "typed decode";
constexpr std::string_view typedEncode = "typed encode";

void parseWithSimdjson(benchmark::State& state, const std::string& text) {
    const simdjson::padded_string padded{text};
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(padded).get(root) != simdjson::SUCCESS) {
            state.SkipWithError("parsing failed");
            return;
        }
        benchmark::DoNotOptimize(root);
    }
}

void parseWithBoost(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        boost::json::value value = boost::json::parse(text);
        benchmark::DoNotOptimize(value);
    }
}

void serialiseWithBoost(benchmark::State& state, const std::string& text) {
    const boost::json::value value = boost::json::parse(text);
    for (auto _ : state) {
        std::string serialised = boost::json::serialize(value);
        benchmark::DoNotOptimize(serialised);
    }
}

// The decode of `text`, with the allocations of one decode and the blocks the decoded value owns
// (the allocations of copying it) as counters, each counted once the loop has run.
template <class Value>
void decodeTyped(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        auto value = decode<Value>(text);
        if (!value) {
            state.SkipWithError("decoding failed");
            return;
        }
        benchmark::DoNotOptimize(value);
    }
    const benchmarks::AllocationCounter decoding;
    const Value value = *decode<Value>(text);
    state.counters["allocations"] = static_cast<double>(decoding.count());
    const benchmarks::AllocationCounter copying;
    const Value copy = value;
    benchmark::DoNotOptimize(copy);
    state.counters["blocks"] = static_cast<double>(copying.count());
}

template <class Value>
void encodeTyped(benchmark::State& state, const Value& value) {
    for (auto _ : state) {
        auto text = encode(value);
        benchmark::DoNotOptimize(text);
    }
}

// How many times each measure is taken.
constexpr int repetitions = 5;

// Registers the five measures of one text.
template <class Value>
void registerText(std::string_view name, const Value& value) {
    const std::string text = *encode(value);
    const auto add = [&](std::string_view measure, auto function) {
        benchmark::RegisterBenchmark(fmt::format("{}/{}", measure, name).c_str(), function)
            ->Unit(benchmark::kMicrosecond)
            ->Repetitions(repetitions)
            ->ReportAggregatesOnly(true);
    };
    add(simdjsonParse, [text](benchmark::State& state) { parseWithSimdjson(state, text); });
    add(boostParse, [text](benchmark::State& state) { parseWithBoost(state, text); });
    add(boostSerialise, [text](benchmark::State& state) { serialiseWithBoost(state, text); });
    add(typedDecode, [text](benchmark::State& state) { decodeTyped<Value>(state, text); });
    add(typedEncode, [value](benchmark::State& state) { encodeTyped(state, value); });
}

// Keeps the median of each measure's repetitions, besides reporting them as usual.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") {
                continue;
            }
            const std::string& name = run.run_name.function_name;
            const auto slash = name.rfind('/');
            Measured& measured = results_[{name.substr(0, slash), name.substr(slash + 1)}];
            measured.microseconds = run.GetAdjustedRealTime();
            for (const auto& [counter, value] : run.counters) {
                measured.counters[counter] = value.value;
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    // The table of times, the ratios and the allocations, one column a text.
    void printTable() const {
        fmt::print("\n{:<32}", "median time per text (us)");
        for (const auto name : textNames) {
            fmt::print("{:>12}", name);
        }
        fmt::print("\n");
        for (const auto measure : {simdjsonParse, boostParse, boostSerialise, typedDecode, typedEncode}) {
            printRow(
                measure, [&](std::string_view text) { return time(measure, text); }, "{:>12.3f}");
        }
        printRow(
            "decode / simdjson parse",
            [&](std::string_view text) { return time(typedDecode, text) / time(simdjsonParse, text); },
            "{:>12.2f}");
        printRow(
            "encode / Boost serialise",
            [&](std::string_view text) { return time(typedEncode, text) / time(boostSerialise, text); },
            "{:>12.2f}");
        printRow(
            "allocations per decode", [&](std::string_view text) { return counter(text, "allocations"); },
            "{:>12.0f}");
        printRow(
            "blocks of the decoded value", [&](std::string_view text) { return counter(text, "blocks"); },
            "{:>12.0f}");
    }

private:
    struct Measured {
        double microseconds = 0.0;
        std::map<std::string, double> counters;
    };

    [[nodiscard]] double time(std::string_view measure, std::string_view text) const {
        const auto found = results_.find({std::string{measure}, std::string{text}});
        return found == results_.end() ? 0.0 : found->second.microseconds;
    }

    [[nodiscard]] double counter(std::string_view text, const std::string& name) const {
        const auto found = results_.find({std::string{typedDecode}, std::string{text}});
        if (found == results_.end() || !found->second.counters.contains(name)) {
            return 0.0;
        }
        return found->second.counters.at(name);
    }

    template <class Cell>
    static void printRow(std::string_view title, Cell cell, fmt::format_string<double> format) {
        fmt::print("{:<32}", title);
        for (const auto name : textNames) {
            fmt::print(format, cell(name));
        }
        fmt::print("\n");
    }

    std::map<std::pair<std::string, std::string>, Measured> results_;
};

}  // namespace
}  // namespace screenweaver

int main(int argc, char** argv) {
    using namespace screenweaver;
    benchmark::Initialize(&argc, argv);
    registerText(textNames[0], benchmarks::largeConfig());
    registerText(textNames[1], benchmarks::smallConfig());
    registerText(textNames[2], benchmarks::typicalRequest());
    registerText(textNames[3], benchmarks::typicalReply());
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTable();
    benchmark::Shutdown();
    return 0;
}
