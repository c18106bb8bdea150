#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "CoreTypes/Log.hpp"

namespace screenweaver {

/// One entry as a capturing sink keeps it.
struct LogEntry {
    std::string subsystem;
    std::string category;
    LogLevel level = LogLevel::defaultLevel;
    std::string message;

    friend bool operator==(const LogEntry&, const LogEntry&) = default;
};

/// A sink that keeps every entry in memory, so that tests can read back what was logged.
class CapturingLogSink final : public LogSink {
public:
    void write(std::string_view subsystem, std::string_view category, LogLevel level,
               std::string_view message) override;

    /// Every entry so far, in the order written.
    [[nodiscard]] std::vector<LogEntry> entries() const;
    /// The entries of one category, in the order written.
    [[nodiscard]] std::vector<LogEntry> entries(std::string_view category) const;

private:
    mutable std::mutex mutex_;
    std::vector<LogEntry> entries_;
};

/// Installs a capturing sink for its lifetime and puts the previous sink back afterwards.
class ScopedLogCapture {
public:
    ScopedLogCapture();
    ~ScopedLogCapture();
    ScopedLogCapture(const ScopedLogCapture&) = delete;
    ScopedLogCapture& operator=(const ScopedLogCapture&) = delete;

    [[nodiscard]] std::vector<LogEntry> entries() const { return sink_->entries(); }
    [[nodiscard]] std::vector<LogEntry> entries(std::string_view category) const {
        return sink_->entries(category);
    }

private:
    std::shared_ptr<CapturingLogSink> sink_;
    std::shared_ptr<LogSink> previous_;
};

}  // namespace screenweaver
