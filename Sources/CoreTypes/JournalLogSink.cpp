// The system log sink where there is no unified log: the systemd journal.
#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <systemd/sd-journal.h>
#include <utility>

#include "CoreTypes/Log.hpp"

namespace screenweaver {

namespace {

int journalPriority(LogLevel level) {
    switch (level) {
        case LogLevel::defaultLevel:
            return 5;  // LOG_NOTICE, like the unified log's default level
        case LogLevel::info:
            return 6;  // LOG_INFO
        case LogLevel::error:
            return 3;  // LOG_ERR
    }
    std::unreachable();
}

/// Writes each entry to the journal with the fields SUBSYSTEM and CATEGORY beside the executable's
/// name (SYSLOG_IDENTIFIER). Where no journal runs (no journal socket when the sink is made) it
/// writes nothing at all: no fallback to standard error, which belongs to the service's own lines.
class JournalLogSink final : public LogSink {
public:
    JournalLogSink() {
        struct stat socketStatus {};
        journalRunning_ = ::stat("/run/systemd/journal/socket", &socketStatus) == 0;
    }

    void write(std::string_view subsystem, std::string_view category, LogLevel level,
               std::string_view message) override {
        if (!journalRunning_) {
            return;
        }
        const std::string subsystemText{subsystem};
        const std::string categoryText{category};
        const std::string messageText{message};
        sd_journal_send("MESSAGE=%s", messageText.c_str(), "PRIORITY=%d", journalPriority(level),
                        "SYSLOG_IDENTIFIER=%s", program_invocation_short_name, "SUBSYSTEM=%s",
                        subsystemText.c_str(), "CATEGORY=%s", categoryText.c_str(), nullptr);
    }

private:
    bool journalRunning_ = false;
};

}  // namespace

std::shared_ptr<LogSink> makeSystemLogSink() {
    return std::make_shared<JournalLogSink>();
}

}  // namespace screenweaver
