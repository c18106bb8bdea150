// The system log sink on macOS: the unified log.
#include <map>
#include <mutex>
#include <os/log.h>
#include <string>
#include <utility>

#include "CoreTypes/Log.hpp"

namespace screenweaver {

namespace {

os_log_type_t unifiedLogType(LogLevel level) {
    switch (level) {
        case LogLevel::defaultLevel:
            return OS_LOG_TYPE_DEFAULT;
        case LogLevel::info:
            return OS_LOG_TYPE_INFO;
        case LogLevel::error:
            return OS_LOG_TYPE_ERROR;
    }
    std::unreachable();
}

/// Writes each entry to the unified log under its subsystem and category, as public text (the format
/// is the literal "%{public}s", which the unified log requires to be a constant).
class UnifiedLogSink final : public LogSink {
public:
    void write(std::string_view subsystem, std::string_view category, LogLevel level,
               std::string_view message) override {
        const std::string text{message};
        os_log_with_type(handle(subsystem, category), unifiedLogType(level), "%{public}s", text.c_str());
    }

private:
    // os_log_create hands out one never-freed object per pair; keeping them saves the lookup.
    os_log_t handle(std::string_view subsystem, std::string_view category) {
        std::scoped_lock lock{mutex_};
        auto key = std::make_pair(std::string{subsystem}, std::string{category});
        auto found = handles_.find(key);
        if (found == handles_.end()) {
            os_log_t created = os_log_create(key.first.c_str(), key.second.c_str());
            found = handles_.emplace(std::move(key), created).first;
        }
        return found->second;
    }

    std::mutex mutex_;
    std::map<std::pair<std::string, std::string>, os_log_t> handles_;
};

}  // namespace

std::shared_ptr<LogSink> makeSystemLogSink() {
    return std::make_shared<UnifiedLogSink>();
}

}  // namespace screenweaver
