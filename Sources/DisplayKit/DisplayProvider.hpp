#pragma once

#include <cstdint>
#include <expected>
#include <vector>

#include "CoreTypes/AsyncStream.hpp"
#include "CoreTypes/Clock.hpp"
#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/DisplayModeInfo.hpp"
#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayTopology.hpp"
#include "CoreTypes/Model/LayoutPlan.hpp"
#include "CoreTypes/Protocols/DisplayProviding.hpp"
#include "CoreTypes/StopToken.hpp"
#include "DisplayKit/ChangeDebouncer.hpp"
#include "Platform/CFRef.hpp"
#include "Platform/PlatformAPI.hpp"

namespace screenweaver {

/// The one object that talks to CoreGraphics about the displays that are online: it reads
/// topologies and mode lists, applies layout plans in one configuration transaction and publishes
/// a fresh topology once per burst of reconfiguration callbacks.
///
/// The provider registers its reconfiguration callback when it is made and removes it when it is
/// destroyed; the callback refers to the provider unretained, so the provider lives as long as
/// its owner needs display services. CoreGraphics delivers reconfiguration callbacks only to a
/// process that runs a run loop on its main thread (the application runs one); without it
/// `changes` stays silent and `apply` waits the whole settle timeout whenever a burst is in flight.
///
/// With no CoreGraphics table (a machine without the interface) nothing is registered, every
/// snapshot fails with `enumerationFailed` and every mode list with `modeListUnavailable`.
/// Safe to use from any thread.
class DisplayProvider final : public DisplayProviding {
public:
    /// `changeDebounceInterval` is the quiet period that ends a burst of callbacks;
    /// `settleTimeout` bounds how long `apply` waits for the displays to settle. The module sets
    /// no defaults for either. `clock` must outlive the provider.
    DisplayProvider(Clock::Duration changeDebounceInterval, Clock::Duration settleTimeout,
                    platform::PlatformAPI platform = platform::PlatformAPI::system(),
                    const Clock& clock = ContinuousClock::shared());
    ~DisplayProvider() override;
    DisplayProvider(const DisplayProvider&) = delete;
    DisplayProvider& operator=(const DisplayProvider&) = delete;

    [[nodiscard]] std::expected<DisplayTopology, DisplayError> snapshot() const override;

    /// A new subscription to the topologies published at the end of each burst (unbounded
    /// buffering); destroying it ends the subscription.
    [[nodiscard]] AsyncStream<DisplayTopology> changes() const override;

    /// The display's modes, low-resolution duplicates included, without repeats and in the order of
    /// `ModeList::normalized`.
    [[nodiscard]] std::expected<std::vector<DisplayModeInfo>, DisplayError> availableModes(
        std::uint32_t displayID) const override;

    /// Waits for the displays the plan names to be online with no burst in flight (at most the
    /// settle timeout), predicts and validates the whole resulting arrangement, then stages
    /// un-mirroring, mode changes and origins in one transaction and completes it permanently. A
    /// failure anywhere after the transaction opens cancels it, so nothing of a failed plan reaches
    /// the displays. A stop request ends the settle wait early; the plan is then applied to a live
    /// snapshot. Callers issue one `apply` at a time.
    [[nodiscard]] std::expected<void, DisplayError> apply(const LayoutPlan& plan,
                                                          const StopToken& stop) override;

    /// The online displays in enumeration order, read through `platform`; touches no provider.
    [[nodiscard]] static std::expected<DisplayTopology, DisplayError> takeSnapshot(
        const platform::PlatformAPI& platform);

    /// The display's ColorSync UUID as CoreFoundation renders it; for a display without one, its
    /// vendor, model and serial numbers joined by "-" (e.g. "1552-4-0"), with one error-level log
    /// line. Always the `physical` case.
    [[nodiscard]] static DisplayRef ref(const platform::PlatformAPI& platform, std::uint32_t displayID);

    /// The function registered for reconfiguration callbacks, with the provider as `userInfo`. The
    /// display and the flags are ignored: begin and end calls count alike. A null `userInfo` does
    /// nothing.
    static void reconfigurationCallback(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags,
                                        void* userInfo);

private:
    // Lets tests reach the transaction and the in-flight flag directly.
    friend struct DisplayProviderTestApi;

    /// A display's modes as CoreGraphics lists them: the copied array, and its elements borrowed
    /// from it in order.
    struct RawModes {
        platform::CFRef<CFArrayRef> array;
        std::vector<CGDisplayModeRef> modes;
    };

    [[nodiscard]] static std::expected<std::vector<std::uint32_t>, DisplayError> activeDisplayIDs(
        const platform::PlatformAPI& platform);
    /// The display's modes as CoreGraphics lists them, low-resolution duplicates included; never
    /// empty.
    [[nodiscard]] static std::expected<RawModes, DisplayError> rawModes(const platform::PlatformAPI& platform,
                                                                        std::uint32_t displayID);

    [[nodiscard]] std::expected<DisplayTopology, DisplayError> settledTopology(const LayoutPlan& plan,
                                                                               const StopToken& stop) const;
    [[nodiscard]] static std::expected<void, DisplayError> commit(const platform::PlatformAPI& platform,
                                                                  const LayoutPlan& plan);
    [[nodiscard]] static std::expected<void, DisplayError> stageUnmirroring(
        const platform::PlatformAPI& platform, const std::vector<std::uint32_t>& displayIDs,
        CGDisplayConfigRef config);
    [[nodiscard]] static std::expected<void, DisplayError> stageModeChanges(
        const platform::PlatformAPI& platform, const std::vector<ModeChange>& changes,
        CGDisplayConfigRef config);
    [[nodiscard]] static std::expected<void, DisplayError> stagePlacements(
        const platform::PlatformAPI& platform, const std::vector<DisplayPlacement>& placements,
        CGDisplayConfigRef config);

    platform::PlatformAPI platform_;
    const Clock& clock_;
    ChangeDebouncer debouncer_;
    Clock::Duration settleTimeout_;
    bool callbackRegistered_ = false;
};

}  // namespace screenweaver
