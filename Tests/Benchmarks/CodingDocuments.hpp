#pragma once

#include "CoreTypes/Model/CLIReply.hpp"
#include "CoreTypes/Model/CLIRequest.hpp"
#include "CoreTypes/Model/Config.hpp"

namespace screenweaver::benchmarks {

/// 1,000 groups of 4 virtual displays each, every group with a layout and modes for its displays
/// and the built-in panel, a protected display, a hot key and per-display Docks: 2.5 MB of JSON.
Config largeConfig();

/// What a user's document typically holds: three groups (two virtual displays beside the panel, one
/// for travelling, one that mirrors to a projector), the settings and one deleted group; under 4 KB.
Config smallConfig();

/// A command-line tool's request to protect a display.
CLIRequest typicalRequest();

/// The application's answer to a request for the live displays: three of them.
CLIReply typicalReply();

}  // namespace screenweaver::benchmarks
