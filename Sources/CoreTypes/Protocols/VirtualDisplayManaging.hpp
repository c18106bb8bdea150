#pragma once

#include <cstdint>
#include <expected>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/VirtualDisplayAvailability.hpp"
#include "CoreTypes/Model/VirtualDisplayHandle.hpp"
#include "CoreTypes/Model/VirtualDisplaySpec.hpp"
#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// Creates and releases virtual displays. Implementations are shared between threads and must be
/// safe to call from several at once. The waiting operations block the calling thread; a stop
/// request ends their waits early.
class VirtualDisplayManaging {
public:
    virtual ~VirtualDisplayManaging() = default;

    /// Whether displays can be created here at all; answers at once.
    [[nodiscard]] virtual VirtualDisplayAvailability availability() const = 0;

    /// Creates a display for `spec`. On success the handle carries `spec` unchanged, the new
    /// display's ID and the density actually used.
    [[nodiscard]] virtual std::expected<VirtualDisplayHandle, VirtualDisplayError> create(
        const VirtualDisplaySpec& spec, const StopToken& stop) = 0;

    /// Releases the display of `handle`. Cannot fail for the caller: what goes wrong is logged.
    virtual void release(const VirtualDisplayHandle& handle, const StopToken& stop) = 0;

    /// Releases the virtual displays this service created earlier but holds no handle for, and
    /// returns how many there were (0 when none).
    virtual std::int64_t releaseOrphans(const StopToken& stop) = 0;

protected:
    VirtualDisplayManaging() = default;
    VirtualDisplayManaging(const VirtualDisplayManaging&) = default;
    VirtualDisplayManaging& operator=(const VirtualDisplayManaging&) = default;
};

}  // namespace screenweaver
