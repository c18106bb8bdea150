#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "Platform/X11/EDIDIdentity.hpp"

namespace screenweaver::platform::x11 {
namespace {

std::vector<std::uint8_t> edidOf(const std::string& monitor) {
    std::ifstream file{std::string{SCREENWEAVER_FIXTURES_DIR} + "/edid/" + monitor + ".bin",
                       std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
}

TEST(EDIDIdentity, ReadsWhoMadeEachRealMonitorWhichModelAndWhichOne) {
    const struct {
        const char* monitor;
        EDIDIdentity identity;
        const char* manufacturer;
    } monitors[] = {
        {"monitor-01", {.manufacturerID = 0x4C2D, .productCode = 0x0841, .serialNumber = 1}, "SAM"},
        {"monitor-02", {.manufacturerID = 0x09D1, .productCode = 0x7516, .serialNumber = 8}, "BNQ"},
        {"monitor-03", {.manufacturerID = 0x26CD, .productCode = 0x5613, .serialNumber = 0x01010101}, "IVM"},
        {"monitor-04", {.manufacturerID = 0x1E6D, .productCode = 0x757A, .serialNumber = 277844}, "GSM"},
    };
    for (const auto& expected : monitors) {
        const auto identity = EDIDIdentity::parse(edidOf(expected.monitor));
        ASSERT_TRUE(identity) << expected.monitor;
        EXPECT_EQ(*identity, expected.identity) << expected.monitor;
        EXPECT_EQ(identity->manufacturer(), expected.manufacturer) << expected.monitor;
    }
}

TEST(EDIDIdentity, ReadsAppleAsTheVendorNumberAMacReports) {
    std::vector<std::uint8_t> edid = edidOf("monitor-03");
    edid[8] = 0x06;
    edid[9] = 0x10;
    EXPECT_EQ(EDIDIdentity::parse(edid)->manufacturerID, 1552);
    EXPECT_EQ(EDIDIdentity::parse(edid)->manufacturer(), "APP");
}

TEST(EDIDIdentity, GivesNothingForAShortBlock) {
    const std::vector<std::uint8_t> edid = edidOf("monitor-03");
    EXPECT_FALSE(EDIDIdentity::parse(std::span{edid}.first(127)));
    EXPECT_FALSE(EDIDIdentity::parse({}));
}

TEST(EDIDIdentity, GivesNothingForABlockWithoutTheFixedHeader) {
    std::vector<std::uint8_t> edid = edidOf("monitor-03");
    edid[7] = 0xFF;
    EXPECT_FALSE(EDIDIdentity::parse(edid));
}

TEST(EDIDIdentity, KeepsTheIdentityOfABlockWhoseChecksumIsWrong) {
    std::vector<std::uint8_t> edid = edidOf("monitor-03");
    edid[127] = static_cast<std::uint8_t>(edid[127] + 1);
    EXPECT_EQ(EDIDIdentity::parse(edid)->serialNumber, 0x01010101U);
}

TEST(EDIDIdentity, WritesALetterOutsideTheAlphabetAsAQuestionMark) {
    EXPECT_EQ((EDIDIdentity{.manufacturerID = 0x0000, .productCode = 0, .serialNumber = 0}.manufacturer()),
              "???");
    EXPECT_EQ((EDIDIdentity{.manufacturerID = 0x7FFF, .productCode = 0, .serialNumber = 0}.manufacturer()),
              "???");
}

}  // namespace
}  // namespace screenweaver::platform::x11
