#include "ScriptedVirtualDisplays.hpp"

#include <algorithm>
#include <mutex>

namespace screenweaver::testing {

struct ScriptedVirtualDisplays::State {
    struct Entry {
        LiveDisplaySnapshot snapshot;
        std::optional<Clock::Instant> appearsAt;
        std::optional<Clock::Instant> vanishesAt;
        bool mirrorBreakable = true;
        bool acceptsModeSwitch = true;
        bool made = false;
        bool alive = true;
    };

    explicit State(const Clock& time) : clock(time) {}

    [[nodiscard]] bool active(const Entry& entry) const {
        const Clock::Instant now = clock.now();
        return entry.alive && entry.appearsAt && now >= *entry.appearsAt &&
               (!entry.vanishesAt || now < *entry.vanishesAt);
    }

    Entry* activeEntry(std::uint32_t displayID) {
        for (Entry& entry : entries) {
            if (entry.snapshot.displayID == displayID && active(entry)) {
                return &entry;
            }
        }
        return nullptr;
    }

    const Clock& clock;
    mutable std::mutex mutex;
    std::vector<ScriptedAttempt> attempts;
    std::size_t attemptsMade = 0;
    std::vector<Entry> entries;
    std::vector<VirtualDisplayRecipe> recipes;
    std::uint32_t nextDisplayID = 100;
    std::size_t breakMirroringCalls = 0;
    std::size_t selectModeCalls = 0;
    std::size_t observations = 0;
    std::optional<std::pair<StopSource, std::size_t>> stopAfter;
};

namespace {

using State = ScriptedVirtualDisplays::State;

class ScriptedDisplay final : public RetainedDisplay {
public:
    ScriptedDisplay(std::shared_ptr<State> state, std::uint32_t displayID, std::uint32_t reportedID)
        : state_(std::move(state)), displayID_(displayID), reportedID_(reportedID) {}

    ~ScriptedDisplay() override {
        const std::scoped_lock lock{state_->mutex};
        for (State::Entry& entry : state_->entries) {
            if (entry.made && entry.snapshot.displayID == displayID_) {
                entry.alive = false;
            }
        }
    }

    [[nodiscard]] std::uint32_t displayID() const override { return reportedID_; }

private:
    std::shared_ptr<State> state_;
    std::uint32_t displayID_;
    std::uint32_t reportedID_;
};

class ScriptedMaker final : public NativeVirtualDisplayMaking {
public:
    explicit ScriptedMaker(std::shared_ptr<State> state) : state_(std::move(state)) {}

    [[nodiscard]] std::expected<std::unique_ptr<RetainedDisplay>, VirtualDisplayError> makeDisplay(
        const VirtualDisplayRecipe& recipe) const override {
        const std::scoped_lock lock{state_->mutex};
        state_->recipes.push_back(recipe);
        const std::size_t index = state_->attemptsMade++;
        const ScriptedAttempt attempt =
            index < state_->attempts.size() ? state_->attempts[index] : ScriptedAttempt{};
        if (attempt.refusal) {
            return std::unexpected{*attempt.refusal};
        }
        const std::uint32_t displayID = state_->nextDisplayID++;
        const auto size = attempt.appearsAtPixelSize.value_or(
            std::pair<std::int64_t, std::int64_t>{recipe.maxPixelsWide, recipe.maxPixelsHigh});
        State::Entry entry{
            .snapshot = {.displayID = displayID,
                         .vendorNumber = recipe.vendorID,
                         .serialNumber = recipe.serialNumber,
                         .mirrorSource =
                             attempt.appearsMirrored ? std::optional<std::uint32_t>{1} : std::nullopt,
                         .pixelWidth = size.first,
                         .pixelHeight = size.second},
            .appearsAt = attempt.appearsAfter ? std::optional{state_->clock.now() + *attempt.appearsAfter}
                                              : std::nullopt,
            .vanishesAt = std::nullopt,
            .mirrorBreakable = attempt.mirrorBreakable,
            .acceptsModeSwitch = attempt.acceptsModeSwitch,
            .made = true,
            .alive = true,
        };
        state_->entries.push_back(entry);
        return std::make_unique<ScriptedDisplay>(state_, displayID,
                                                 attempt.answersZeroDisplayID ? 0 : displayID);
    }

private:
    std::shared_ptr<State> state_;
};

class ScriptedProbe final : public LiveDisplayProbing {
public:
    explicit ScriptedProbe(std::shared_ptr<State> state) : state_(std::move(state)) {}

    [[nodiscard]] std::vector<LiveDisplaySnapshot> activeDisplays() override {
        const std::scoped_lock lock{state_->mutex};
        ++state_->observations;
        if (state_->stopAfter && state_->observations >= state_->stopAfter->second) {
            state_->stopAfter->first.requestStop();
        }
        std::vector<LiveDisplaySnapshot> list;
        for (const State::Entry& entry : state_->entries) {
            if (state_->active(entry)) {
                list.push_back(entry.snapshot);
            }
        }
        return list;
    }

    bool breakMirroring(std::uint32_t displayID) override {
        const std::scoped_lock lock{state_->mutex};
        ++state_->breakMirroringCalls;
        State::Entry* entry = state_->activeEntry(displayID);
        if (entry == nullptr || !entry->mirrorBreakable) {
            return false;
        }
        entry->snapshot.mirrorSource.reset();
        return true;
    }

    bool selectMode(std::uint32_t displayID, std::int64_t pixelWidth, std::int64_t pixelHeight) override {
        const std::scoped_lock lock{state_->mutex};
        ++state_->selectModeCalls;
        State::Entry* entry = state_->activeEntry(displayID);
        if (entry == nullptr || !entry->acceptsModeSwitch) {
            return false;
        }
        entry->snapshot.pixelWidth = pixelWidth;
        entry->snapshot.pixelHeight = pixelHeight;
        return true;
    }

private:
    std::shared_ptr<State> state_;
};

}  // namespace

ScriptedVirtualDisplays::ScriptedVirtualDisplays(const Clock& clock)
    : state_(std::make_shared<State>(clock)) {}

std::unique_ptr<NativeVirtualDisplayMaking> ScriptedVirtualDisplays::maker() const {
    return std::make_unique<ScriptedMaker>(state_);
}

std::shared_ptr<LiveDisplayProbing> ScriptedVirtualDisplays::probe() const {
    return std::make_shared<ScriptedProbe>(state_);
}

void ScriptedVirtualDisplays::script(std::vector<ScriptedAttempt> attempts) {
    const std::scoped_lock lock{state_->mutex};
    state_->attempts = std::move(attempts);
    state_->attemptsMade = 0;
}

void ScriptedVirtualDisplays::addDisplay(LiveDisplaySnapshot snapshot,
                                         std::optional<Clock::Instant> vanishesAt) {
    const std::scoped_lock lock{state_->mutex};
    state_->entries.push_back({.snapshot = snapshot,
                               .appearsAt = Clock::Instant::min(),
                               .vanishesAt = vanishesAt,
                               .mirrorBreakable = true,
                               .acceptsModeSwitch = true,
                               .made = false,
                               .alive = true});
}

void ScriptedVirtualDisplays::vanish(std::uint32_t displayID) {
    const std::scoped_lock lock{state_->mutex};
    for (State::Entry& entry : state_->entries) {
        if (entry.snapshot.displayID == displayID) {
            entry.vanishesAt = state_->clock.now();
        }
    }
}

void ScriptedVirtualDisplays::stopAfterObservations(StopSource source, std::size_t observations) {
    const std::scoped_lock lock{state_->mutex};
    state_->stopAfter = std::pair{std::move(source), state_->observations + observations};
}

std::vector<VirtualDisplayRecipe> ScriptedVirtualDisplays::recipes() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->recipes;
}

std::vector<std::uint32_t> ScriptedVirtualDisplays::madeAndAlive() const {
    const std::scoped_lock lock{state_->mutex};
    std::vector<std::uint32_t> ids;
    for (const State::Entry& entry : state_->entries) {
        if (entry.made && entry.alive) {
            ids.push_back(entry.snapshot.displayID);
        }
    }
    return ids;
}

std::vector<std::uint32_t> ScriptedVirtualDisplays::activeIDs() const {
    const std::scoped_lock lock{state_->mutex};
    std::vector<std::uint32_t> ids;
    for (const State::Entry& entry : state_->entries) {
        if (state_->active(entry)) {
            ids.push_back(entry.snapshot.displayID);
        }
    }
    return ids;
}

std::size_t ScriptedVirtualDisplays::breakMirroringCalls() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->breakMirroringCalls;
}

std::size_t ScriptedVirtualDisplays::selectModeCalls() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->selectModeCalls;
}

std::size_t ScriptedVirtualDisplays::observations() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->observations;
}

}  // namespace screenweaver::testing
