#pragma once

#include <chrono>

namespace screenweaver {

/// A moment in time, to the microsecond, counted from 1 January 1970 UTC. Microseconds are the
/// finest unit the configuration document writes, so every date reads back exactly as written.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

}  // namespace screenweaver
