#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Execution.h"

/// The execution of a runner, and the calls that cancel it.
///
/// One thread at a time makes, uses and ends executions. Any thread may cancel, at any moment of
/// this object's life and however often. A cancel calls the engine only while the execution is open
/// to it; at any other moment it sets the stop flag alone. The lock is not held while the engine
/// works, so what the engine calls back may cancel again or end the execution.
class CancellableExecution
{
public:
    CancellableExecution();
    /// Waits for cancels under way on other threads. A remaining execution is deleted without
    /// dispose.
    ~CancellableExecution();
    CancellableExecution(const CancellableExecution&) = delete;
    CancellableExecution& operator=(const CancellableExecution&) = delete;

    EmbeddedHV::Execution* operator->() const { return _execution.get(); }

    /// Takes a new execution, which cancels do not reach yet.
    void hold(std::unique_ptr<EmbeddedHV::Execution> execution);
    /// From here on cancels reach the execution. A cancel that came before and found none has set
    /// the stop flag when this returns, so that no cancel is lost between the two.
    void open();
    /// Takes the execution out, or returns null if it holds no execution. Waits for cancels under
    /// way on other threads. If the call comes from within a cancel, that cancel keeps the object
    /// until the engine returns.
    std::shared_ptr<EmbeddedHV::Execution> take();
    /// Returns when no cancel is under way on another thread. Cancels that come later do not reach
    /// the execution.
    void close();

    /// Cancels the open execution, if there is one, in a Java environment of its own, ends the
    /// host's run if `endsRun` says so, and sets the stop flag. Passes on what the attachment or
    /// the engine throws; then the run goes on and the flag stays as it was.
    void cancel(bool endsRun);
    bool isStopped() const { return _stopped; }
    void resetStop() { _stopped = false; }

private:
    using ExecutionPointer = std::shared_ptr<EmbeddedHV::Execution>;
    class Call;

    /// A cancel under way. Numbers grow from call to call.
    struct CallEntry
    {
        std::uint64_t number;
        std::thread::id thread;
    };

    void reach(ExecutionPointer execution);

    ExecutionPointer _execution; ///< for the thread that runs jobs
    std::mutex _mutex;
    std::condition_variable _callEnded;
    ExecutionPointer _open;        ///< what a cancel reaches; guarded, like the two below
    std::vector<CallEntry> _calls; ///< under way
    std::uint64_t _lastCall = 0;
    std::atomic<bool> _stopped = false;
};
