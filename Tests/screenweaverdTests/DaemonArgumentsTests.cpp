#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "screenweaverd/DaemonArguments.hpp"

namespace screenweaver {
namespace {

DaemonInvocation parse(std::vector<std::string> arguments) {
    return DaemonArguments::parse(arguments);
}

TEST(DaemonArguments, NoArgumentMeansServe) {
    EXPECT_EQ(parse({}), DaemonInvocation::serve());
}

TEST(DaemonArguments, SelfTestFlagMeansSelfTest) {
    EXPECT_EQ(parse({"--self-test"}), DaemonInvocation::selfTest());
}

TEST(DaemonArguments, LongAndShortHelpFlagsMeanHelp) {
    EXPECT_EQ(parse({"--help"}), DaemonInvocation::help());
    EXPECT_EQ(parse({"-h"}), DaemonInvocation::help());
}

TEST(DaemonArguments, OnlyTheFirstArgumentCounts) {
    EXPECT_EQ(parse({"--self-test", "--help"}), DaemonInvocation::selfTest());
    EXPECT_EQ(parse({"--help", "--self-test"}), DaemonInvocation::help());
    EXPECT_EQ(parse({"--foo", "--help"}), DaemonInvocation::unknown("--foo"));
}

TEST(DaemonArguments, ComparesExactlyAndCaseSensitively) {
    EXPECT_EQ(parse({"-help"}), DaemonInvocation::unknown("-help"));
    EXPECT_EQ(parse({"--HELP"}), DaemonInvocation::unknown("--HELP"));
    EXPECT_EQ(parse({"--self-test "}), DaemonInvocation::unknown("--self-test "));
}

TEST(DaemonArguments, AnEmptyFirstArgumentIsUnknown) {
    EXPECT_EQ(parse({""}), DaemonInvocation::unknown(""));
}

}  // namespace
}  // namespace screenweaver
