#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "CoreTypes/StopToken.hpp"

namespace screenweaver {

/// An asynchronous stream with unbounded buffering: one consumer takes elements, in order, from
/// the stream object; any number of producers feed it through copies of its `Continuation`.
///
/// The stream object is move-only and is the consumer: destroying it is the consumer stopping,
/// which runs the termination handler (once) so that whoever feeds the stream can forget it.
/// Producers never wait: `yield` only appends to the buffer.
template <class Element>
class AsyncStream {
    struct State {
        std::mutex mutex;
        std::condition_variable available;
        std::deque<Element> buffer;
        bool finished = false;
        bool terminated = false;
        std::function<void()> onTermination;

        // Runs the handler outside the lock, at most once.
        void terminate() {
            std::function<void()> handler;
            {
                std::scoped_lock lock{mutex};
                if (terminated) {
                    return;
                }
                terminated = true;
                finished = true;
                buffer.clear();
                handler = std::move(onTermination);
            }
            available.notify_all();
            if (handler) {
                handler();
            }
        }
    };

public:
    /// The feeding end. Copies share the one stream.
    class Continuation {
    public:
        /// Buffers `element` for the consumer. Returns false, dropping the element, when the
        /// consumer has stopped or the stream was finished.
        bool yield(Element element) const {
            {
                std::scoped_lock lock{state_->mutex};
                if (state_->finished) {
                    return false;
                }
                state_->buffer.push_back(std::move(element));
            }
            state_->available.notify_one();
            return true;
        }

        /// Ends the stream: the consumer receives what is buffered, then nothing.
        void finish() const {
            {
                std::scoped_lock lock{state_->mutex};
                state_->finished = true;
            }
            state_->available.notify_all();
        }

        /// Sets the handler that runs once when the consumer stops. If it has stopped already,
        /// the handler runs at once.
        void onTermination(std::function<void()>&& handler) const {
            std::unique_lock lock{state_->mutex};
            if (state_->terminated) {
                lock.unlock();
                handler();
                return;
            }
            state_->onTermination = std::move(handler);
        }

    private:
        friend class AsyncStream;
        explicit Continuation(std::shared_ptr<State> state) : state_(std::move(state)) {}
        std::shared_ptr<State> state_;
    };

    /// Makes a stream and the continuation that feeds it.
    static std::pair<AsyncStream, Continuation> make() {
        auto state = std::make_shared<State>();
        return {AsyncStream{state}, Continuation{state}};
    }

    AsyncStream(AsyncStream&& other) noexcept = default;
    AsyncStream& operator=(AsyncStream&& other) noexcept {
        if (this != &other) {
            stop();
            state_ = std::move(other.state_);
        }
        return *this;
    }
    AsyncStream(const AsyncStream&) = delete;
    AsyncStream& operator=(const AsyncStream&) = delete;
    ~AsyncStream() { stop(); }

    /// Waits for the next element. Returns nothing when the stream has finished and its buffer is
    /// empty, or when `stop` is requested first.
    std::optional<Element> next(const StopToken& stop = {}) {
        std::unique_lock lock{state_->mutex};
        waitUntilReadyOrStopped(state_->available, lock, stop,
                                [&] { return !state_->buffer.empty() || state_->finished; });
        return takeLocked();
    }

    /// The next buffered element, without waiting.
    std::optional<Element> tryNext() {
        std::scoped_lock lock{state_->mutex};
        return takeLocked();
    }

private:
    explicit AsyncStream(std::shared_ptr<State> state) : state_(std::move(state)) {}

    std::optional<Element> takeLocked() {
        if (state_->buffer.empty()) {
            return std::nullopt;
        }
        std::optional<Element> element{std::move(state_->buffer.front())};
        state_->buffer.pop_front();
        return element;
    }

    void stop() {
        if (state_) {
            state_->terminate();
            state_.reset();
        }
    }

    std::shared_ptr<State> state_;
};

}  // namespace screenweaver
