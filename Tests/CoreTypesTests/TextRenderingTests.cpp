#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver::text {
namespace {

struct DoubleText {
    double value;
    const char* text;
};

class DoubleDescription : public testing::TestWithParam<DoubleText> {};

TEST_P(DoubleDescription, PrintsShortestRoundTripDigitsInTheSystemsLayout) {
    EXPECT_EQ(describe(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Examples, DoubleDescription,
    testing::Values(DoubleText{60.0, "60.0"}, DoubleText{59.94, "59.94"}, DoubleText{480.0, "480.0"},
                    DoubleText{1000.0, "1000.0"}, DoubleText{100.125, "100.125"},
                    DoubleText{2147483647.4, "2147483647.4"}, DoubleText{3000000000.0, "3000000000.0"},
                    DoubleText{4294967296.0, "4294967296.0"},
                    DoubleText{9007199254740992.0, "9007199254740992.0"},
                    DoubleText{1000000000000000.0, "1000000000000000.0"}, DoubleText{1e16, "1e+16"},
                    DoubleText{1.25e16, "1.25e+16"}, DoubleText{9007199254740994.0, "9.007199254740994e+15"},
                    DoubleText{1e-5, "1e-05"}, DoubleText{1.5e-7, "1.5e-07"}, DoubleText{0.0001, "0.0001"},
                    DoubleText{0.000125, "0.000125"}, DoubleText{0.5, "0.5"},
                    DoubleText{std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
                    DoubleText{std::numeric_limits<double>::denorm_min(), "5e-324"}, DoubleText{0.0, "0.0"},
                    DoubleText{-0.0, "-0.0"}, DoubleText{-60.0, "-60.0"}, DoubleText{-1e16, "-1e+16"},
                    DoubleText{-0.25, "-0.25"}, DoubleText{std::numeric_limits<double>::infinity(), "inf"},
                    DoubleText{-std::numeric_limits<double>::infinity(), "-inf"},
                    DoubleText{std::numeric_limits<double>::quiet_NaN(), "nan"}));

TEST(QuotedText, EscapesQuoteBackslashAndControlCharacters) {
    EXPECT_EQ(quoted("say \"hi\""), R"("say \"hi\"")");
    EXPECT_EQ(quoted(R"(a\b)"), R"("a\\b")");
    EXPECT_EQ(quoted("line\nfeed\r\ttab"), R"("line\nfeed\r\ttab")");
    EXPECT_EQ(quoted(std::string_view{"nul\0end", 7}), R"("nul\0end")");
    EXPECT_EQ(quoted("\x1B[0m"), R"("\u{1B}[0m")");
    EXPECT_EQ(quoted("\x7F"), R"("\u{7F}")");
}

TEST(QuotedText, WritesSingleQuotesAndNonASCIITextAsTheyAre) {
    EXPECT_EQ(quoted("it's Zürich"), "\"it's Zürich\"");
}

TEST(CaseDescription, WritesACaseWithoutPayloadAsItsNameAlone) {
    EXPECT_EQ(CaseDescription{"notActiveAfterCreation"}.str(), "notActiveAfterCreation");
}

TEST(CaseDescription, WritesLabelledAndUnlabelledValuesSeparatedByCommaAndBlank) {
    EXPECT_EQ(
        CaseDescription{"migrationFailed"}.integer("from", 3).integer("to", 4).string("reason", "x").str(),
        R"(migrationFailed(from: 3, to: 4, reason: "x"))");
    EXPECT_EQ(CaseDescription{"unsupportedSchemaVersion"}.integer("", 7).str(),
              "unsupportedSchemaVersion(7)");
    EXPECT_EQ(CaseDescription{"flag"}.boolean("on", false).real("rate", 60.0).str(),
              "flag(on: false, rate: 60.0)");
}

}  // namespace
}  // namespace screenweaver::text
