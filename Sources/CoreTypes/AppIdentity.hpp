#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "CoreTypes/URL.hpp"
#include "CoreTypes/VirtualDisplayVendor.hpp"

namespace screenweaver::AppIdentity {

// The product's fixed identity: the names by which the application, the command-line tool and the
// privileged service find each other. Fixed at build time.

inline constexpr std::string_view name = "Screenweaver";
inline constexpr std::string_view bundleID = "org.screenweaver.app";
inline constexpr std::string_view urlScheme = "screenweaver";
inline constexpr std::string_view cliName = "swctl";
inline constexpr std::string_view daemonName = "screenweaverd";
/// The launchd label of the service.
inline constexpr std::string_view daemonLabel = "org.screenweaver.daemon";
/// The file name of the service's launchd property list.
inline constexpr std::string_view daemonPlistName = "org.screenweaver.daemon.plist";
/// The support folder, tilde not yet expanded.
inline constexpr std::string_view supportDir = "~/Library/Application Support/Screenweaver";
inline constexpr std::string_view logSubsystem = "org.screenweaver";
/// The vendor number of every virtual display this product creates (0x5357).
inline constexpr std::uint32_t virtualDisplayVendorID = screenweaver::virtualDisplayVendorID;

/// The literal the update manifest's address is built from: the product's update host, path
/// "/release.json".
inline constexpr std::string_view updateManifestAddress = "https://updates.screenweaver.org/release.json";

/// The update manifest's address, built once on first use from `updateManifestAddress`; absent
/// if that literal does not parse.
const std::optional<URL>& updateManifestURL();

/// `supportDir` with the tilde expanded to the current user's home folder, as a file URL
/// (`path()` reads the plain path back).
URL supportDirectoryURL();

}  // namespace screenweaver::AppIdentity
