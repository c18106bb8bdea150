#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace screenweaver {

/// The levels the system logs at.
enum class LogLevel {
    /// The unified log's default level: start-up, resolver problems, dropped rungs, orphans found,
    /// committed arrangements.
    defaultLevel,
    info,
    error,
};

/// Where log entries go. The system sink writes to the unified log on macOS and to the systemd
/// journal elsewhere; tests install a capturing one. Implementations are called from any thread.
class LogSink {
public:
    virtual ~LogSink() = default;
    virtual void write(std::string_view subsystem, std::string_view category, LogLevel level,
                       std::string_view message) = 0;
};

/// One named logger: a subsystem and a category. Messages are composed by the caller and logged
/// as public text. Log entries never go to the service's standard error.
class Logger {
public:
    Logger(std::string_view subsystem, std::string_view category);

    [[nodiscard]] const std::string& subsystem() const { return subsystem_; }
    [[nodiscard]] const std::string& category() const { return category_; }

    void log(LogLevel level, std::string_view message) const;
    /// At the default level.
    void log(std::string_view message) const { log(LogLevel::defaultLevel, message); }
    void info(std::string_view message) const { log(LogLevel::info, message); }
    void error(std::string_view message) const { log(LogLevel::error, message); }

private:
    std::string subsystem_;
    std::string category_;
};

/// Replaces the sink every logger writes to and returns the one it replaces. Production code never
/// calls this; tests install a capturing sink through `ScopedLogCapture`.
std::shared_ptr<LogSink> exchangeLogSink(std::shared_ptr<LogSink> sink);

/// The system's own sink: the unified log on macOS, the systemd journal elsewhere.
std::shared_ptr<LogSink> makeSystemLogSink();

}  // namespace screenweaver

/// The ten loggers of the product, all under the subsystem "org.screenweaver"; each is created once,
/// on first use, and asking again gives the same logger. Member name and category are the same.
namespace screenweaver::Log {

/// Display arrangement.
const Logger& display();
/// Virtual displays.
const Logger& virtualDisplay();
const Logger& ddc();
const Logger& catalog();
const Logger& persistence();
const Logger& engine();
const Logger& automation();
const Logger& ui();
const Logger& diagnostics();
/// The service entry.
const Logger& app();

}  // namespace screenweaver::Log
