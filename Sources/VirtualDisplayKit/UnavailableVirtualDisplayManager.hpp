#pragma once

#include <string>

#include "CoreTypes/Protocols/VirtualDisplayManaging.hpp"

namespace screenweaver {

/// The manager for a system where virtual displays cannot be made: it touches nothing, answers
/// `unavailable` and fails every creation with its stored error.
class UnavailableVirtualDisplayManager final : public VirtualDisplayManaging {
public:
    /// `availability` is `unavailable(reason)` and the error `apiUnavailable(reason:)`.
    explicit UnavailableVirtualDisplayManager(std::string reason);
    /// `availability` carries the error's sentence for the user (see the availability gate).
    explicit UnavailableVirtualDisplayManager(VirtualDisplayError error);

    [[nodiscard]] VirtualDisplayAvailability availability() const override { return availability_; }
    [[nodiscard]] const VirtualDisplayError& error() const { return error_; }

    [[nodiscard]] std::expected<VirtualDisplayHandle, VirtualDisplayError> create(
        const VirtualDisplaySpec& spec, const StopToken& stop) override;
    void release(const VirtualDisplayHandle& handle, const StopToken& stop) override;
    std::int64_t releaseOrphans(const StopToken& stop) override;

private:
    VirtualDisplayAvailability availability_;
    VirtualDisplayError error_;
};

}  // namespace screenweaver
