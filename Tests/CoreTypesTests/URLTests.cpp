#include <gtest/gtest.h>

#include "CoreTypes/URL.hpp"

namespace screenweaver {
namespace {

TEST(URL, ParsesAnAbsoluteWebAddress) {
    const auto url = URL::parse("https://updates.example.org:8443/a/release.json?x=1#top");
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), "https");
    EXPECT_EQ(url->host(), "updates.example.org");
    EXPECT_EQ(url->path(), "/a/release.json");
    EXPECT_FALSE(url->isFileURL());
}

TEST(URL, RefusesTextThatIsNotAnAbsoluteURL) {
    EXPECT_EQ(URL::parse(""), std::nullopt);
    EXPECT_EQ(URL::parse("updates.example.org/release.json"), std::nullopt);
    EXPECT_EQ(URL::parse("https:/release.json"), std::nullopt);
    EXPECT_EQ(URL::parse("https:///release.json"), std::nullopt);
    EXPECT_EQ(URL::parse("https://exa mple.org/release.json"), std::nullopt);
    EXPECT_EQ(URL::parse("https://example.org/%zz"), std::nullopt);
    EXPECT_EQ(URL::parse("1https://example.org/"), std::nullopt);
    EXPECT_EQ(URL::parse("https://example.org/caf\xC3\xA9"), std::nullopt);
}

TEST(URL, FileURLPercentEncodesWhatAPathMayNotHoldAndDecodesItBack) {
    const URL url = URL::fileURL("/tmp/a b/100%/ü");
    EXPECT_EQ(url.absoluteString(), "file:///tmp/a%20b/100%25/%C3%BC");
    EXPECT_EQ(url.path(), "/tmp/a b/100%/ü");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(URL::parse(url.absoluteString()), std::nullopt) << "a file URL has an empty host";
}

}  // namespace
}  // namespace screenweaver
