#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "CoreTypes/AppIdentity.hpp"

namespace screenweaver {
namespace {

TEST(AppIdentity, HoldsTheProductsFixedNames) {
    EXPECT_EQ(AppIdentity::name, "Screenweaver");
    EXPECT_EQ(AppIdentity::bundleID, "org.screenweaver.app");
    EXPECT_EQ(AppIdentity::urlScheme, "screenweaver");
    EXPECT_EQ(AppIdentity::cliName, "swctl");
    EXPECT_EQ(AppIdentity::daemonName, "screenweaverd");
    EXPECT_EQ(AppIdentity::daemonLabel, "org.screenweaver.daemon");
    EXPECT_EQ(AppIdentity::daemonPlistName, "org.screenweaver.daemon.plist");
    EXPECT_EQ(AppIdentity::supportDir, "~/Library/Application Support/Screenweaver");
    EXPECT_EQ(AppIdentity::logSubsystem, "org.screenweaver");
    EXPECT_EQ(AppIdentity::virtualDisplayVendorID, 21335U);
    EXPECT_EQ(AppIdentity::virtualDisplayVendorID, 0x5357U);
}

TEST(AppIdentity, UpdateManifestIsASecureAddressWhosePathIsTheReleaseDocument) {
    const auto& url = AppIdentity::updateManifestURL();
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), "https");
    EXPECT_EQ(url->host(), "updates.screenweaver.org");
    EXPECT_EQ(url->path(), "/release.json");
}

TEST(AppIdentity, UpdateManifestURLIsBuiltOnceAndSharedAfterwards) {
    EXPECT_EQ(&AppIdentity::updateManifestURL(), &AppIdentity::updateManifestURL());
}

// Runs a body with $HOME set to `home`, restoring it afterwards.
class HomeFolder {
public:
    explicit HomeFolder(const char* home) {
        if (const char* current = std::getenv("HOME")) {
            saved_ = current;
        }
        setenv("HOME", home, 1);
    }
    ~HomeFolder() {
        if (saved_) {
            setenv("HOME", saved_->c_str(), 1);
        } else {
            unsetenv("HOME");
        }
    }
    HomeFolder(const HomeFolder&) = delete;
    HomeFolder& operator=(const HomeFolder&) = delete;

private:
    std::optional<std::string> saved_;
};

TEST(AppIdentity, SupportDirectoryURLExpandsTheTildeToTheHomeFolder) {
    const HomeFolder home{"/Users/ada"};
    const URL url = AppIdentity::supportDirectoryURL();
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.path(), "/Users/ada/Library/Application Support/Screenweaver");
    EXPECT_EQ(url.absoluteString(), "file:///Users/ada/Library/Application%20Support/Screenweaver");
}

TEST(AppIdentity, SupportDirectoryURLNeverContainsATildeAndEndsInTheProductName) {
    const std::string text = AppIdentity::supportDirectoryURL().absoluteString();
    EXPECT_EQ(text.find('~'), std::string::npos);
    EXPECT_TRUE(text.ends_with("Screenweaver")) << text;
}

TEST(AppIdentity, SupportDirectoryURLEncodesBlanksInTheHomeFolder) {
    const HomeFolder home{"/Users/Ada Lovelace"};
    const URL url = AppIdentity::supportDirectoryURL();
    EXPECT_EQ(url.absoluteString(),
              "file:///Users/Ada%20Lovelace/Library/Application%20Support/Screenweaver");
    EXPECT_EQ(url.path(), "/Users/Ada Lovelace/Library/Application Support/Screenweaver");
}

TEST(AppIdentity, SupportDirectoryURLFallsBackToTheUserDatabaseWithoutHome) {
    const HomeFolder home{""};
    const std::string path = AppIdentity::supportDirectoryURL().path();
    EXPECT_TRUE(path.starts_with("/")) << path;
    EXPECT_TRUE(path.ends_with("/Library/Application Support/Screenweaver")) << path;
}

}  // namespace
}  // namespace screenweaver
