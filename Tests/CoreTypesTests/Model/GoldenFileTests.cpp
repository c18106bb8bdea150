#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "CodingTestSupport.hpp"
#include "CoreTypes/Model/CLIReplyJSON.hpp"
#include "CoreTypes/Model/CLIRequestJSON.hpp"
#include "CoreTypes/Model/CatalogEntryJSON.hpp"
#include "CoreTypes/Model/ConfigJSON.hpp"
#include "ModelSamples.hpp"

namespace screenweaver {
namespace {

// The golden files hold exactly the bytes the encoder writes: compact, no final line break.
std::string fixture(const std::string& name) {
    std::ifstream file{std::string{SCREENWEAVER_FIXTURES_DIR} + "/" + name, std::ios::binary};
    EXPECT_TRUE(file.good()) << name;
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

template <class T>
void expectGolden(const std::string& name, const T& expected) {
    const std::string json = fixture(name);
    const auto value = decode<T>(json);
    ASSERT_TRUE(value.has_value()) << name << ": " << value.error().description();
    EXPECT_EQ(*value, expected) << name;
    EXPECT_EQ(testing::encoded(*value), json) << name;
}

TEST(GoldenFile, CompleteConfigurationDocumentDecodesAndEncodesBackToTheSameBytes) {
    expectGolden("config-complete.json", testing::sampleConfig());
}

TEST(GoldenFile, CatalogWithEveryFamilyDecodesAndEncodesBackToTheSameBytes) {
    expectGolden("catalog-every-family.json", testing::sampleCatalog());
}

TEST(GoldenFile, EveryRequestDecodesAndEncodesBackToTheSameBytes) {
    for (const auto& [name, request] : testing::sampleRequests()) {
        expectGolden("control-protocol/" + name + ".json", request);
    }
}

TEST(GoldenFile, EveryReplyDecodesAndEncodesBackToTheSameBytes) {
    for (const auto& [name, reply] : testing::sampleReplies()) {
        expectGolden("control-protocol/" + name + ".json", reply);
    }
}

// The documents the coding benchmark measures, which the fuzzers start from as well: the 1,000-group
// one reads whole here (the fuzzers read their inputs cut short).
TEST(GoldenFile, BenchmarkDocumentsDecodeAndEncodeBackToTheSameBytes) {
    for (const std::string name : {"config-1000-groups.json", "config-three-groups.json"}) {
        const std::string json = fixture("../Fuzz/corpus/ConfigFuzzer/" + name);
        const auto value = decode<Config>(json);
        ASSERT_TRUE(value.has_value()) << name << ": " << value.error().description();
        EXPECT_EQ(testing::encoded(*value), json) << name;
    }
}

}  // namespace
}  // namespace screenweaver
