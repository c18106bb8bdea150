#include <gtest/gtest.h>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/AppSettingsJSON.hpp"
#include "CoreTypes/Model/CLIReplyJSON.hpp"
#include "CoreTypes/Model/CLIRequestJSON.hpp"
#include "CoreTypes/Model/CatalogEntryJSON.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "CoreTypes/Model/DisplayGroupJSON.hpp"
#include "CoreTypes/Model/DisplayModeInfoJSON.hpp"
#include "CoreTypes/Model/DisplayRefJSON.hpp"
#include "CoreTypes/Model/KeyComboJSON.hpp"
#include "CoreTypes/Model/VirtualDisplaySpecJSON.hpp"
#include "RandomModelValues.hpp"

namespace screenweaver {
namespace {

constexpr int iterations = 2000;

// Encodes `make()` values, decodes them back and checks that they are equal and that encoding
// the decoded value gives the same bytes again.
template <class Make>
void expectRoundTrips(std::uint64_t seed, Make make) {
    testing::RandomModelValues random{seed};
    for (int iteration = 0; iteration < iterations; ++iteration) {
        const auto value = make(random);
        using Value = std::remove_cvref_t<decltype(value)>;
        const auto json = encode(value);
        ASSERT_TRUE(json.has_value()) << json.error().description();
        const auto back = decode<Value>(*json);
        ASSERT_TRUE(back.has_value()) << *json << "\n" << back.error().description();
        ASSERT_TRUE(*back == value) << "iteration " << iteration << ": " << *json;
        ASSERT_EQ(encode(*back), json) << "iteration " << iteration;
    }
}

TEST(RoundTrip, DisplayRefs) {
    expectRoundTrips(1, [](auto& random) { return random.ref(); });
}
TEST(RoundTrip, DisplayModes) {
    expectRoundTrips(2, [](auto& random) { return random.mode(); });
}
TEST(RoundTrip, VirtualDisplaySpecs) {
    expectRoundTrips(3, [](auto& random) { return random.spec(); });
}
TEST(RoundTrip, KeyCombos) {
    expectRoundTrips(4, [](auto& random) { return random.keyCombo(); });
}
TEST(RoundTrip, ExtraDockSettings) {
    expectRoundTrips(5, [](auto& random) { return random.extraDockSettings(); });
}
TEST(RoundTrip, DisplayGroups) {
    expectRoundTrips(6, [](auto& random) { return random.group(); });
}
TEST(RoundTrip, AppSettings) {
    expectRoundTrips(7, [](auto& random) { return random.settings(); });
}
TEST(RoundTrip, Configs) {
    expectRoundTrips(8, [](auto& random) { return random.config(); });
}
TEST(RoundTrip, CatalogEntries) {
    expectRoundTrips(9, [](auto& random) { return random.catalogEntry(); });
}
TEST(RoundTrip, EDIDSummaries) {
    expectRoundTrips(10, [](auto& random) { return random.edidSummary(); });
}
TEST(RoundTrip, Requests) {
    expectRoundTrips(11, [](auto& random) { return random.request(); });
}
TEST(RoundTrip, Replies) {
    expectRoundTrips(12, [](auto& random) { return random.reply(); });
}
TEST(RoundTrip, Dates) {
    expectRoundTrips(13, [](auto& random) { return random.date(); });
}
TEST(RoundTrip, Doubles) {
    expectRoundTrips(14, [](auto& random) { return random.number(); });
}

}  // namespace
}  // namespace screenweaver
