#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Protocols/VirtualDisplayManaging.hpp"
#include "Platform/PlatformAPI.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"
#include "VirtualDisplayKit/NativeVirtualDisplayMaking.hpp"
#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayGateOutcome.hpp"

namespace screenweaver {

/// Creates virtual displays, proves that each came up as asked (active, not mirrored, at its pixel
/// size), keeps each on screen until it is released, and tidies up after displays whose owning
/// process died.
///
/// Creation climbs the density ladder, building one native display per rung until the system
/// accepts one, then verifies it against the live state. Each verification tests once, tries its
/// corrective action, and only when the live state lags polls it every `pollInterval` until
/// `settleTimeout` has passed on the clock, then tests a last time. A display that fails any step is
/// dropped, so a failed creation leaves nothing on screen.
///
/// The manager is an actor: one operation at a time works on its state, under one mutex that is
/// released only while a verification or the orphan wait sleeps. A stop request ends such a sleep
/// early; the final test then decides. Safe to call from any thread.
class VirtualDisplayManager final : public VirtualDisplayManaging {
public:
    static constexpr Clock::Duration defaultSettleTimeout = std::chrono::seconds{6};
    static constexpr Clock::Duration defaultPollInterval = std::chrono::milliseconds{50};

    /// Resolves the private interface through `platform`, gates it with the process's macOS
    /// version and, when the classes were found, makes displays with a native builder handing out
    /// the user-initiated global queue (`VirtualDisplayBackend::coreGraphics`). The platform's
    /// tables and `clock` must outlive the manager.
    VirtualDisplayManager(const platform::PlatformAPI& platform, std::shared_ptr<LiveDisplayProbing> probe,
                          const Clock& clock);

    /// A manager over a machine's backend; `clock` must outlive it.
    VirtualDisplayManager(VirtualDisplayBackend backend, const Clock& clock);

    /// A manager over parts already decided: the gate's outcome, the maker (absent when the
    /// interface was not resolved), the probe and the clock, which must outlive the manager.
    VirtualDisplayManager(VirtualDisplayGateOutcome outcome,
                          std::unique_ptr<NativeVirtualDisplayMaking> builder,
                          std::shared_ptr<LiveDisplayProbing> probe, const Clock& clock);

    ~VirtualDisplayManager() override;
    VirtualDisplayManager(const VirtualDisplayManager&) = delete;
    VirtualDisplayManager& operator=(const VirtualDisplayManager&) = delete;

    [[nodiscard]] VirtualDisplayAvailability availability() const override { return availability_; }

    [[nodiscard]] std::expected<VirtualDisplayHandle, VirtualDisplayError> create(
        const VirtualDisplaySpec& spec, const StopToken& stop) override;
    void release(const VirtualDisplayHandle& handle, const StopToken& stop) override;
    std::int64_t releaseOrphans(const StopToken& stop) override;

private:
    using ActorLock = std::unique_lock<std::mutex>;

    struct Rung {
        std::unique_ptr<RetainedDisplay> display;
        double ppi = 0.0;
    };

    /// Builds the VirtualDisplaySpec's display at the first rung of its density ladder the system accepts.
    [[nodiscard]] std::expected<Rung, VirtualDisplayError> climbLadder(const VirtualDisplaySpec& spec) const;

    /// The three checks of a new display (one pattern: test, correct, poll until the deadline,
    /// test and correct a last time), each failing with the error the caller reports.
    [[nodiscard]] std::expected<void, VirtualDisplayError> verifyPresence(std::uint32_t displayID,
                                                                          ActorLock& lock,
                                                                          const StopToken& stop) const;
    [[nodiscard]] std::expected<void, VirtualDisplayError> verifyUnmirrored(std::uint32_t displayID,
                                                                            ActorLock& lock,
                                                                            const StopToken& stop) const;
    [[nodiscard]] std::expected<void, VirtualDisplayError> verifyMode(std::uint32_t displayID,
                                                                      const VirtualDisplaySpec& spec,
                                                                      ActorLock& lock,
                                                                      const StopToken& stop) const;

    /// Sleeps one poll interval with the actor's lock released.
    void pause(ActorLock& lock, const StopToken& stop) const;

    [[nodiscard]] std::optional<LiveDisplaySnapshot> snapshot(std::uint32_t displayID) const;

    /// The active displays carrying `vendorID`, in the probe's order.
    [[nodiscard]] std::vector<std::uint32_t> taggedDisplayIDs(std::uint32_t vendorID) const;

    const VirtualDisplayAvailability availability_;
    const VirtualDisplayGateOutcome outcome_;
    const std::unique_ptr<NativeVirtualDisplayMaking> builder_;
    const std::shared_ptr<LiveDisplayProbing> probe_;
    const Clock& clock_;
    const Clock::Duration settleTimeout_ = defaultSettleTimeout;
    const Clock::Duration pollInterval_ = defaultPollInterval;

    mutable std::mutex actor_;
    /// The displays this process keeps on screen, by display ID.
    std::unordered_map<std::uint32_t, std::unique_ptr<RetainedDisplay>> retained_;
};

}  // namespace screenweaver
