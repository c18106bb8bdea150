#pragma once

#include <string>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/VirtualDisplayAvailability.hpp"
#include "VirtualDisplayKit/VirtualDisplayGateOutcome.hpp"

/// Decides whether virtual displays may be attempted on this system, from whether the private
/// interface was resolved and from the macOS major version, and words the answer for the user.
namespace screenweaver::VirtualDisplayAvailabilityGate {

/// The oldest macOS major version whose private interface is used.
inline constexpr int minimumMajorVersion = 14;
/// The newest macOS major version the interface was validated on.
inline constexpr int newestValidatedMajorVersion = 26;

/// The rules in order: a system older than 14 is blocked for its version (even when the classes
/// are there), then an unresolved interface is blocked, else the interface is usable, beyond the
/// known-good range from 27 on.
[[nodiscard]] VirtualDisplayGateOutcome evaluate(bool apiResolved, int osVersion);

/// The sentence a blocking error gives the user: its own reason for `apiUnavailable` and
/// `unsupportedOSVersion`, a fixed sentence for any other case.
[[nodiscard]] std::string unavailableReason(const VirtualDisplayError& error);

/// `available` for a usable outcome, else `unavailable` with the blocking error's sentence.
[[nodiscard]] VirtualDisplayAvailability availability(const VirtualDisplayGateOutcome& outcome);

}  // namespace screenweaver::VirtualDisplayAvailabilityGate
