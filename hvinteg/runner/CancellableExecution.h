#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Execution.h"

/// The execution of a runner and the calls that cancel it.
///
/// One thread at a time creates, uses and ends executions. Any thread may cancel, at any time and
/// repeatedly. A cancel calls the engine only while the execution is open; otherwise it only sets
/// the stop flag. No lock is held while the engine works, so its callbacks may cancel again or end
/// the execution.
class CancellableExecution
{
public:
    CancellableExecution();
    /// Waits for cancels on other threads. Deletes a remaining execution without dispose.
    ~CancellableExecution();
    CancellableExecution(const CancellableExecution&) = delete;
    CancellableExecution& operator=(const CancellableExecution&) = delete;

    EmbeddedHV::Execution* operator->() const { return _execution.get(); }
    EmbeddedHV::Execution* get() const { return _execution.get(); }

    /// Takes a new execution. Cancels cannot reach it before open.
    void hold(std::unique_ptr<EmbeddedHV::Execution> execution);
    /// Lets cancels reach the execution. If an earlier cancel found no open execution, the stop
    /// flag is set when this returns: no cancel is lost.
    void open();
    /// Takes the execution out, or returns null. Waits for cancels on other
    /// threads. If called from within a cancel, that cancel keeps the object alive until the engine
    /// returns.
    std::shared_ptr<EmbeddedHV::Execution> take();
    /// Waits for cancels on other threads. Later cancels do not reach the execution.
    void close();

    /// Cancels the open execution, if there is one, in its own Java environment. Then ends the
    /// host's run if `endsRun` is true, and sets the stop flag. Passes on what the attachment or
    /// the engine throws; the run and the flag are then unchanged.
    void cancel(bool endsRun);
    bool isStopped() const { return _stopped; }
    void resetStop() { _stopped = false; }

private:
    using ExecutionPointer = std::shared_ptr<EmbeddedHV::Execution>;
    class Call;

    /// A cancel in progress. Numbers increase from call to call.
    struct CallEntry
    {
        std::uint64_t number;
        std::thread::id thread;
    };

    void reach(ExecutionPointer execution);

    ExecutionPointer _execution; ///< used by the thread that runs jobs
    std::mutex _mutex;
    std::condition_variable _callEnded;
    ExecutionPointer _open;        ///< reachable by cancels; guarded, as are the next two
    std::vector<CallEntry> _calls; ///< in progress
    std::uint64_t _lastCall = 0;
    std::atomic<bool> _stopped = false;
};
