#pragma once

#include <memory>
#include <string_view>

#include "CoreTypes/Log.hpp"

namespace screenweaver::benchmarks {

/// While it lives, log entries are composed as usual but go nowhere, so that a benchmark does not
/// measure the journal.
class DiscardedLog {
public:
    DiscardedLog() : previous_(exchangeLogSink(std::make_shared<Discarding>())) {}
    ~DiscardedLog() { exchangeLogSink(previous_); }
    DiscardedLog(const DiscardedLog&) = delete;
    DiscardedLog& operator=(const DiscardedLog&) = delete;

private:
    class Discarding final : public LogSink {
    public:
        void write(std::string_view, std::string_view, LogLevel, std::string_view) override {}
    };

    std::shared_ptr<LogSink> previous_;
};

}  // namespace screenweaver::benchmarks
