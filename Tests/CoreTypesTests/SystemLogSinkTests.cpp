// The system log sink of a machine without the unified log: the systemd journal.
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include "CoreTypes/Log.hpp"

namespace screenweaver {
namespace {

constexpr const char* journalSocketPath = "/run/systemd/journal/socket";

// Reads what a block of code writes to this process's standard error.
class StandardErrorCapture {
public:
    StandardErrorCapture() {
        EXPECT_EQ(::pipe(pipe_.data()), 0);
        saved_ = ::dup(2);
        ::dup2(pipe_[1], 2);
    }
    ~StandardErrorCapture() { restore(); }
    StandardErrorCapture(const StandardErrorCapture&) = delete;
    StandardErrorCapture& operator=(const StandardErrorCapture&) = delete;

    std::string finish() {
        restore();
        std::string text;
        std::array<char, 256> buffer{};
        ssize_t count = 0;
        while ((count = ::read(pipe_[0], buffer.data(), buffer.size())) > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        ::close(pipe_[0]);
        return text;
    }

private:
    void restore() {
        if (saved_ >= 0) {
            ::dup2(saved_, 2);
            ::close(saved_);
            ::close(pipe_[1]);
            saved_ = -1;
        }
    }

    std::array<int, 2> pipe_{};
    int saved_ = -1;
};

TEST(SystemLogSink, NeverWritesToStandardError) {
    const auto sink = makeSystemLogSink();
    StandardErrorCapture capture;
    sink->write("org.screenweaver", "app", LogLevel::defaultLevel, "service starting as uid 0");
    sink->write("org.screenweaver", "display", LogLevel::error, "Rejected layout plan");
    EXPECT_EQ(capture.finish(), "");
}

// Stands in for journald: a datagram socket at the journal's address that keeps what it receives.
class FakeJournal {
public:
    FakeJournal() {
        std::filesystem::create_directories(std::filesystem::path{journalSocketPath}.parent_path());
        socket_ = ::socket(AF_UNIX, SOCK_DGRAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, journalSocketPath, sizeof(address.sun_path) - 1);
        bound_ = ::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    }
    ~FakeJournal() {
        ::close(socket_);
        if (bound_) {
            ::unlink(journalSocketPath);
        }
    }
    FakeJournal(const FakeJournal&) = delete;
    FakeJournal& operator=(const FakeJournal&) = delete;

    [[nodiscard]] bool bound() const { return bound_; }

    std::string receive() const {
        std::array<char, 4096> buffer{};
        const ssize_t count = ::recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
        return count > 0 ? std::string{buffer.data(), static_cast<std::size_t>(count)} : std::string{};
    }

private:
    int socket_ = -1;
    bool bound_ = false;
};

TEST(SystemLogSink, SendsEachEntryToTheJournalWithSubsystemCategoryAndExecutableFields) {
    struct stat existing {};
    if (::stat(journalSocketPath, &existing) == 0) {
        GTEST_SKIP() << "a real journal runs here; its socket is not ours to take over";
    }
    const FakeJournal journal;
    ASSERT_TRUE(journal.bound()) << "cannot create " << journalSocketPath;
    const auto sink = makeSystemLogSink();
    sink->write("org.screenweaver", "app", LogLevel::defaultLevel, "service starting as uid 0");
    const std::string datagram = journal.receive();
    EXPECT_NE(datagram.find("MESSAGE=service starting as uid 0\n"), std::string::npos) << datagram;
    EXPECT_NE(datagram.find("PRIORITY=5\n"), std::string::npos) << datagram;
    EXPECT_NE(datagram.find("SUBSYSTEM=org.screenweaver\n"), std::string::npos) << datagram;
    EXPECT_NE(datagram.find("CATEGORY=app\n"), std::string::npos) << datagram;
    EXPECT_NE(datagram.find("SYSLOG_IDENTIFIER=CoreTypesTests\n"), std::string::npos) << datagram;

    sink->write("org.screenweaver", "display", LogLevel::error, "Rejected layout plan");
    EXPECT_NE(journal.receive().find("PRIORITY=3\n"), std::string::npos);
}

TEST(SystemLogSink, WritesNothingWhereNoJournalRuns) {
    struct stat existing {};
    if (::stat(journalSocketPath, &existing) == 0) {
        GTEST_SKIP() << "a real journal runs here";
    }
    const auto sink = makeSystemLogSink();
    const FakeJournal lateJournal;
    sink->write("org.screenweaver", "app", LogLevel::info, "lost");
    EXPECT_EQ(lateJournal.receive(), "") << "the sink saw no journal when it was made";
}

}  // namespace
}  // namespace screenweaver
