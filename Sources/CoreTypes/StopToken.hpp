#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

namespace screenweaver {

// libc++ 16, and the libc++ of current Xcode releases, ship no <stop_token>, so cancellation of the
// system's blocking calls goes through this small token of the same shape.

namespace detail {
struct StopState;
}

/// Tells a blocking call whether it has been asked to stop. A default-constructed token can never
/// be stopped. Copies share the state of the `StopSource` they came from.
class StopToken {
public:
    StopToken() = default;

    [[nodiscard]] bool stopRequested() const noexcept;
    [[nodiscard]] bool stopPossible() const noexcept { return state_ != nullptr; }

private:
    friend class StopSource;
    friend class StopCallback;
    explicit StopToken(std::shared_ptr<detail::StopState> state) : state_(std::move(state)) {}
    std::shared_ptr<detail::StopState> state_;
};

/// Owns a stop request: `requestStop()` wakes every call waiting with one of its tokens.
class StopSource {
public:
    StopSource();

    [[nodiscard]] StopToken token() const { return StopToken{state_}; }

    /// Requests the stop and runs the registered callbacks on this thread. Returns false when a
    /// stop had already been requested.
    bool requestStop() const;

    [[nodiscard]] bool stopRequested() const noexcept;

private:
    std::shared_ptr<detail::StopState> state_;
};

/// Runs `callback` when a stop is requested for `token` (at once, on this thread, if it has been
/// already). The destructor deregisters it and, if the callback is running on another thread, waits
/// for it to finish, so the callback may refer to objects that outlive this registration.
class StopCallback {
public:
    StopCallback(const StopToken& token, std::function<void()> callback);
    ~StopCallback();
    StopCallback(const StopCallback&) = delete;
    StopCallback& operator=(const StopCallback&) = delete;

private:
    std::shared_ptr<detail::StopState> state_;
    std::uint64_t id_ = 0;
};

namespace detail {

// Runs `wait` (which waits on `condition` with `lock` held) so that a stop request wakes it. The
// wake-up callback takes the same mutex, so it is registered and removed without the lock held.
template <class Wait>
void waitWakingOnStop(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                      const StopToken& stop, Wait wait) {
    lock.unlock();
    {
        std::mutex& mutex = *lock.mutex();
        const StopCallback wake{stop, [&] {
                                    const std::scoped_lock wakeLock{mutex};
                                    condition.notify_all();
                                }};
        lock.lock();
        wait();
        lock.unlock();
    }
    lock.lock();
}

}  // namespace detail

/// Waits on `condition` (with `lock` held on entry and on return) until `ready()` holds or a stop
/// is requested. Returns `ready()`.
template <class Ready>
bool waitUntilReadyOrStopped(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                             const StopToken& stop, Ready ready) {
    if (!ready()) {
        detail::waitWakingOnStop(condition, lock, stop, [&] {
            condition.wait(lock, [&] { return ready() || stop.stopRequested(); });
        });
    }
    return ready();
}

/// As `waitUntilReadyOrStopped`, giving up at `deadline` on the steady clock.
template <class Ready>
bool waitUntilReadyStoppedOrTimedOut(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                                     const StopToken& stop, std::chrono::steady_clock::time_point deadline,
                                     Ready ready) {
    if (!ready()) {
        detail::waitWakingOnStop(condition, lock, stop, [&] {
            condition.wait_until(lock, deadline, [&] { return ready() || stop.stopRequested(); });
        });
    }
    return ready();
}

}  // namespace screenweaver
