#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

namespace EmbeddedHV {

/// The wish to end a job, set by any thread and seen by the threads that work on it. A cancellation
/// is final; a stop ends the running statement only and is taken back before the next.
class Cancellation
{
public:
    Cancellation() = default;
    /// `wish` is asked as well: for work that is not a job, which cancel does not reach. Any
    /// thread may ask it.
    explicit Cancellation(std::function<bool()> wish) : _wish(std::move(wish)) {}
    /// Waits for a call of cancel that is under way.
    ~Cancellation();
    Cancellation(const Cancellation&) = delete;
    Cancellation& operator=(const Cancellation&) = delete;

    void cancel();
    /// Ends the running statement for a reason of the engine's own.
    void stopStatement();
    /// Before a statement: takes back a stop, never a cancellation.
    void resume();

    bool cancelled() const { return _cancelled.load(std::memory_order_acquire); }
    /// Whether work should end now. Cheap enough for the loop over records.
    bool stopping() const
    {
        return _stopping.load(std::memory_order_relaxed) || (_wish && _wish());
    }

    /// Sleeps until something ends the sleep: a stop, wake, or the time.
    template <class Duration, class Predicate>
    void wait(Duration time, Predicate ready)
    {
        std::unique_lock lock(_mutex);
        _changed.wait_for(lock, time, [&] { return stopping() || ready(); });
    }
    /// Ends a sleep whose predicate has become true by `change`.
    template <class Change>
    void wake(Change change)
    {
        // Notifies under the lock: the object may go as soon as the destructor has the lock.
        const std::lock_guard lock(_mutex);
        change();
        _changed.notify_all();
    }

private:
    const std::function<bool()> _wish;
    std::atomic<bool> _cancelled = false;
    std::atomic<bool> _stopping = false;
    std::mutex _mutex;
    std::condition_variable _changed;
};

} // namespace EmbeddedHV
