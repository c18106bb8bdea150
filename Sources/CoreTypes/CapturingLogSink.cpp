#include "CoreTypes/CapturingLogSink.hpp"

namespace screenweaver {

void CapturingLogSink::write(std::string_view subsystem, std::string_view category, LogLevel level,
                             std::string_view message) {
    std::scoped_lock lock{mutex_};
    entries_.push_back(LogEntry{std::string{subsystem}, std::string{category}, level, std::string{message}});
}

std::vector<LogEntry> CapturingLogSink::entries() const {
    std::scoped_lock lock{mutex_};
    return entries_;
}

std::vector<LogEntry> CapturingLogSink::entries(std::string_view category) const {
    std::scoped_lock lock{mutex_};
    std::vector<LogEntry> selected;
    for (const auto& entry : entries_) {
        if (entry.category == category) {
            selected.push_back(entry);
        }
    }
    return selected;
}

ScopedLogCapture::ScopedLogCapture()
    : sink_(std::make_shared<CapturingLogSink>()), previous_(exchangeLogSink(sink_)) {}

ScopedLogCapture::~ScopedLogCapture() {
    exchangeLogSink(previous_);
}

}  // namespace screenweaver
