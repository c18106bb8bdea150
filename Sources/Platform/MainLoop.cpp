#include "Platform/MainLoop.hpp"

#if defined(__APPLE__)
#include <dispatch/dispatch.h>
#else
#include <unistd.h>
#endif

namespace screenweaver::platform {

void parkMainThreadForever() {
#if defined(__APPLE__)
    dispatch_main();
#else
    // pause() sleeps until a signal arrives; a handled signal returns here and the loop sleeps again.
    for (;;) {
        pause();
    }
#endif
}

}  // namespace screenweaver::platform
