// The launchd job's property list names the label and the path the install rule puts the service at.
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>

namespace screenweaver {
namespace {

std::string propertyList() {
    std::ifstream file{SCREENWEAVER_LAUNCHD_PLIST};
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(LaunchdJob, IsLabelledWithTheServicesLaunchdLabel) {
    const std::regex label{R"(<key>Label</key>\s*<string>org\.screenweaver\.daemon</string>)"};
    EXPECT_TRUE(std::regex_search(propertyList(), label));
}

TEST(LaunchdJob, RunsTheExecutableWhereTheInstallRulePutsIt) {
    const std::string installedPath = std::string{SCREENWEAVER_DAEMON_INSTALL_DIR} + "/screenweaverd";
    const std::regex arguments{
        R"(<key>ProgramArguments</key>\s*<array>\s*<string>([^<]*)</string>\s*</array>)"};
    std::smatch match;
    const std::string text = propertyList();
    ASSERT_TRUE(std::regex_search(text, match, arguments));
    EXPECT_EQ(match[1].str(), installedPath);
}

TEST(LaunchdJob, StartsAtLoadAndIsKeptAlive) {
    const std::string text = propertyList();
    EXPECT_TRUE(std::regex_search(text, std::regex{R"(<key>RunAtLoad</key>\s*<true/>)"}));
    EXPECT_TRUE(std::regex_search(text, std::regex{R"(<key>KeepAlive</key>\s*<true/>)"}));
}

}  // namespace
}  // namespace screenweaver
