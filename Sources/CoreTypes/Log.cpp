#include "CoreTypes/Log.hpp"

#include <mutex>

#include "CoreTypes/AppIdentity.hpp"

namespace screenweaver {

namespace {

struct SinkSlot {
    std::mutex mutex;
    std::shared_ptr<LogSink> sink = makeSystemLogSink();
};

SinkSlot& sinkSlot() {
    static SinkSlot slot;
    return slot;
}

std::shared_ptr<LogSink> currentSink() {
    auto& slot = sinkSlot();
    std::scoped_lock lock{slot.mutex};
    return slot.sink;
}

}  // namespace

Logger::Logger(std::string_view subsystem, std::string_view category)
    : subsystem_(subsystem), category_(category) {}

void Logger::log(LogLevel level, std::string_view message) const {
    // The sink is copied out of its slot, so a test swapping sinks never waits for a slow write.
    if (const auto sink = currentSink()) {
        sink->write(subsystem_, category_, level, message);
    }
}

std::shared_ptr<LogSink> exchangeLogSink(std::shared_ptr<LogSink> sink) {
    auto& slot = sinkSlot();
    std::scoped_lock lock{slot.mutex};
    slot.sink.swap(sink);
    return sink;
}

}  // namespace screenweaver

namespace screenweaver::Log {

// Each logger is a function-local static: created once, on first use, thread-safely. The member
// name is its category.
#define SCREENWEAVER_LOGGER(member)                                     \
    const Logger& member() {                                            \
        static const Logger logger{AppIdentity::logSubsystem, #member}; \
        return logger;                                                  \
    }

SCREENWEAVER_LOGGER(display)
SCREENWEAVER_LOGGER(virtualDisplay)
SCREENWEAVER_LOGGER(ddc)
SCREENWEAVER_LOGGER(catalog)
SCREENWEAVER_LOGGER(persistence)
SCREENWEAVER_LOGGER(engine)
SCREENWEAVER_LOGGER(automation)
SCREENWEAVER_LOGGER(ui)
SCREENWEAVER_LOGGER(diagnostics)
SCREENWEAVER_LOGGER(app)

#undef SCREENWEAVER_LOGGER

}  // namespace screenweaver::Log
