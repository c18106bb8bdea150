#pragma once

#include <memory>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Protocols/VirtualDisplayManaging.hpp"
#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"

/// Decides once, at start-up, which manager clients get.
namespace screenweaver::VirtualDisplayManagerFactory {

/// The real manager when the availability gate lets virtual displays through; otherwise, after
/// logging "virtual displays unavailable: <reason>", an unavailable manager that fails every
/// creation with `apiUnavailable` and that reason. The platform's tables and `clock` must outlive it.
[[nodiscard]] std::unique_ptr<VirtualDisplayManaging> make(const platform::PlatformAPI& platform,
                                                           std::shared_ptr<LiveDisplayProbing> probe,
                                                           const Clock& clock);

/// The same over a machine's backend (`VirtualDisplayBackend::system` for the machine this runs on).
[[nodiscard]] std::unique_ptr<VirtualDisplayManaging> make(VirtualDisplayBackend backend, const Clock& clock);

}  // namespace screenweaver::VirtualDisplayManagerFactory
