#include "CoreTypes/StopToken.hpp"

#include <map>
#include <thread>

namespace screenweaver {

namespace detail {

struct StopState {
    std::mutex mutex;
    std::condition_variable callbackFinished;
    bool stopped = false;
    std::uint64_t nextID = 1;
    std::map<std::uint64_t, std::function<void()>> callbacks;
    // The callback being run by `requestStop`, and the thread running it.
    std::uint64_t runningID = 0;
    std::thread::id runningThread;
};

}  // namespace detail

bool StopToken::stopRequested() const noexcept {
    if (!state_) {
        return false;
    }
    std::scoped_lock lock{state_->mutex};
    return state_->stopped;
}

StopSource::StopSource() : state_(std::make_shared<detail::StopState>()) {}

bool StopSource::stopRequested() const noexcept {
    std::scoped_lock lock{state_->mutex};
    return state_->stopped;
}

bool StopSource::requestStop() const {
    std::unique_lock lock{state_->mutex};
    if (state_->stopped) {
        return false;
    }
    state_->stopped = true;
    state_->runningThread = std::this_thread::get_id();
    // Callbacks registered from now on run at once in their constructor; the ones already here run
    // one at a time, each taken out of the map first so that a deregistration never waits for itself.
    while (!state_->callbacks.empty()) {
        auto entry = state_->callbacks.begin();
        auto callback = std::move(entry->second);
        state_->runningID = entry->first;
        state_->callbacks.erase(entry);
        lock.unlock();
        callback();
        lock.lock();
        state_->runningID = 0;
        state_->callbackFinished.notify_all();
    }
    return true;
}

StopCallback::StopCallback(const StopToken& token, std::function<void()> callback) : state_(token.state_) {
    if (!state_) {
        return;
    }
    {
        std::scoped_lock lock{state_->mutex};
        if (!state_->stopped) {
            id_ = state_->nextID++;
            state_->callbacks.emplace(id_, std::move(callback));
            return;
        }
    }
    callback();
}

StopCallback::~StopCallback() {
    if (!state_ || id_ == 0) {
        return;
    }
    std::unique_lock lock{state_->mutex};
    if (state_->callbacks.erase(id_) == 0 && state_->runningThread != std::this_thread::get_id()) {
        state_->callbackFinished.wait(lock, [&] { return state_->runningID != id_; });
    }
}

}  // namespace screenweaver
