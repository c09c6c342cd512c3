#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

namespace EmbeddedHV {

/// The request to end a job. Any thread may set it; the threads that work on the job check it. A
/// cancellation is final. A stop ends only the running statement and is reset before the next one.
class Cancellation
{
public:
    Cancellation() = default;
    /// `wish` is checked too. It serves work outside jobs, which cancel does not reach. Any thread
    /// may call it.
    explicit Cancellation(std::function<bool()> wish) : _wish(std::move(wish)) {}
    /// Waits until a concurrent call of cancel has returned.
    ~Cancellation();
    Cancellation(const Cancellation&) = delete;
    Cancellation& operator=(const Cancellation&) = delete;

    void cancel();
    /// Ends the running statement for an internal reason.
    void stopStatement();
    /// Resets a stop before the next statement. Does not reset a cancellation.
    void resume();

    bool cancelled() const { return _cancelled.load(std::memory_order_acquire); }
    /// Whether work should end now. Cheap enough to call for every record.
    bool stopping() const
    {
        return _stopping.load(std::memory_order_relaxed) || (_wish && _wish());
    }

    /// Sleeps until a stop, until wake makes `ready` true, or until the time has passed.
    template <class Duration, class Predicate>
    void wait(Duration time, Predicate ready)
    {
        std::unique_lock lock(_mutex);
        _changed.wait_for(lock, time, [&] { return stopping() || ready(); });
    }
    /// Makes a change and wakes the sleeper.
    template <class Change>
    void wake(Change change)
    {
        // Notify under the lock: the object may be destroyed as soon as the lock is free.
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
