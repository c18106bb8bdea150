#pragma once

// The C declarations of everything the system calls in CoreGraphics, ColorSync, CoreFoundation, the
// Objective-C runtime and libdispatch. On macOS they come from the SDK; elsewhere from our own
// transcription of the same declarations, so that the tables of Platform/ have the same types on
// every system. Only Platform/ and the simulated window server include this header's users directly.

#if defined(__APPLE__)

#include <ColorSync/ColorSync.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>
#include <objc/runtime.h>

// The autorelease-pool entry points are exported by libobjc for every architecture and their ABI is
// fixed by clang's ARC runtime support, but no public header declares them.
extern "C" {
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);
}

#else

#include "Platform/TranscribedDeclarations.hpp"

#endif
