#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "CoreTypes/CapturingLogSink.hpp"
#include "CoreTypes/Log.hpp"

namespace screenweaver {
namespace {

struct Member {
    const Logger& (*logger)();
    const char* category;
};

class LogMember : public testing::TestWithParam<Member> {};

TEST_P(LogMember, WritesUnderTheProductSubsystemWithItsOwnCategory) {
    const ScopedLogCapture capture;
    const Logger& logger = GetParam().logger();
    EXPECT_EQ(logger.subsystem(), "org.screenweaver");
    EXPECT_EQ(logger.category(), GetParam().category);
    logger.info("hello");
    const std::vector<LogEntry> expected{{"org.screenweaver", GetParam().category, LogLevel::info, "hello"}};
    EXPECT_EQ(capture.entries(), expected);
}

TEST_P(LogMember, IsTheSameLoggerEveryTimeItIsAskedFor) {
    EXPECT_EQ(&GetParam().logger(), &GetParam().logger());
}

INSTANTIATE_TEST_SUITE_P(TenLoggers, LogMember,
                         testing::Values(Member{&Log::display, "display"},
                                         Member{&Log::virtualDisplay, "virtualDisplay"},
                                         Member{&Log::ddc, "ddc"}, Member{&Log::catalog, "catalog"},
                                         Member{&Log::persistence, "persistence"},
                                         Member{&Log::engine, "engine"},
                                         Member{&Log::automation, "automation"}, Member{&Log::ui, "ui"},
                                         Member{&Log::diagnostics, "diagnostics"}, Member{&Log::app, "app"}));

TEST(Log, KeepsTheLevelOfEachEntry) {
    const ScopedLogCapture capture;
    Log::display().log("committed");
    Log::display().info("created");
    Log::display().error("rejected");
    const auto entries = capture.entries("display");
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].level, LogLevel::defaultLevel);
    EXPECT_EQ(entries[1].level, LogLevel::info);
    EXPECT_EQ(entries[2].level, LogLevel::error);
}

TEST(Log, CreatesEachLoggerOnceWhenFirstAskedFromManyThreads) {
    std::vector<const Logger*> seen(8, nullptr);
    {
        std::vector<std::thread> threads;
        for (std::size_t index = 0; index < seen.size(); ++index) {
            threads.emplace_back([&seen, index] { seen[index] = &Log::engine(); });
        }
        for (auto& thread : threads) {
            thread.join();
        }
    }
    for (const Logger* logger : seen) {
        EXPECT_EQ(logger, &Log::engine());
    }
}

TEST(ScopedLogCapture, PutsThePreviousSinkBackWhenItEnds) {
    const ScopedLogCapture outer;
    {
        const ScopedLogCapture inner;
        Log::ui().log("inner");
        EXPECT_EQ(inner.entries().size(), 1U);
    }
    Log::ui().log("outer");
    ASSERT_EQ(outer.entries().size(), 1U);
    EXPECT_EQ(outer.entries()[0].message, "outer");
}

}  // namespace
}  // namespace screenweaver
