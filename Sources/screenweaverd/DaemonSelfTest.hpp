#pragma once

#include <string>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "CoreTypes/StopToken.hpp"
#include "Platform/PlatformAPI.hpp"

/// The service's check of itself: create one virtual display, see that the machine shows it at the
/// asked size, release it, and say PASS or FAIL.
namespace screenweaver::DaemonSelfTest {

/// What a run found, one line per step in the order they happened.
struct Report {
    bool passed = false;
    std::vector<std::string> lines{};

    friend bool operator==(const Report&, const Report&) = default;
};

/// The display every run asks for: 5120x1440 at 60 Hz, standard range, under one fixed UUID so that
/// each run asks for the same display identity. Built once.
[[nodiscard]] const VirtualDisplaySpec& spec();

/// Runs the check on `platform`'s display server (`VirtualDisplayBackend::system`) with its own
/// manager and probe; waits are measured on `clock`.
/// Never fails: every failure becomes a line of the report. A display it created is released
/// before the verdict, whatever the verdict.
[[nodiscard]] Report run(const platform::PlatformAPI& platform, const Clock& clock,
                         const StopToken& stop = {});

}  // namespace screenweaver::DaemonSelfTest
