#pragma once

namespace screenweaver::platform {

/// Hands the calling (main) thread to the system's main loop for good: `dispatch_main()` on macOS,
/// a blocking wait for signals elsewhere. Never returns and never spins.
[[noreturn]] void parkMainThreadForever();

}  // namespace screenweaver::platform
