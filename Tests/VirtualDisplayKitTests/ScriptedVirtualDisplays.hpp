#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "CoreTypes/Clock.hpp"
#include "CoreTypes/StopToken.hpp"
#include "VirtualDisplayKit/LiveDisplayProbing.hpp"
#include "VirtualDisplayKit/NativeVirtualDisplayMaking.hpp"

namespace screenweaver::testing {

/// How the scripted maker answers one request, and how the display it makes then behaves.
struct ScriptedAttempt {
    /// Returned instead of a display.
    std::optional<VirtualDisplayError> refusal{};
    /// The display reports ID 0 (it still shows up under the ID it was given).
    bool answersZeroDisplayID = false;
    /// How long after it was made the display joins the active list; absent: never.
    std::optional<Clock::Duration> appearsAfter = Clock::Duration::zero();
    /// It comes up mirroring display 1, and whether breaking the mirror works.
    bool appearsMirrored = false;
    bool mirrorBreakable = true;
    /// It comes up at this pixel size instead of the recipe's, and whether a mode switch works.
    std::optional<std::pair<std::int64_t, std::int64_t>> appearsAtPixelSize{};
    bool acceptsModeSwitch = true;
};

/// A scripted maker and probe over one small model of live displays, for driving the manager
/// without a window server: displays the maker makes appear in the probe's list (as scripted) and
/// leave it when their owner is destroyed. Time is read from the given clock.
class ScriptedVirtualDisplays {
public:
    explicit ScriptedVirtualDisplays(const Clock& clock);

    [[nodiscard]] std::unique_ptr<NativeVirtualDisplayMaking> maker() const;
    [[nodiscard]] std::shared_ptr<LiveDisplayProbing> probe() const;

    /// Answers for the maker's requests in order; requests beyond the list get the default attempt.
    void script(std::vector<ScriptedAttempt> attempts);

    /// A display that is not the maker's (a physical one, or an orphan of an earlier process),
    /// active until `vanishesAt`.
    void addDisplay(LiveDisplaySnapshot snapshot, std::optional<Clock::Instant> vanishesAt = std::nullopt);

    /// The display leaves the active list from now on, whoever owns it.
    void vanish(std::uint32_t displayID);

    /// The probe stops the source after this many `activeDisplays` calls (a cancellation that arrives
    /// in the middle of a verification).
    void stopAfterObservations(StopSource source, std::size_t observations);

    [[nodiscard]] std::vector<VirtualDisplayRecipe> recipes() const;
    /// The IDs of the displays made that have not been destroyed, whether active yet or not.
    [[nodiscard]] std::vector<std::uint32_t> madeAndAlive() const;
    [[nodiscard]] std::vector<std::uint32_t> activeIDs() const;
    [[nodiscard]] std::size_t breakMirroringCalls() const;
    [[nodiscard]] std::size_t selectModeCalls() const;
    [[nodiscard]] std::size_t observations() const;

    struct State;

private:
    std::shared_ptr<State> state_;
};

}  // namespace screenweaver::testing
