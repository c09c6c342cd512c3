#include "runner/CancellableExecution.h"

#include <algorithm>
#include <utility>

#include "bridge/JavaThreadScope.h"
#include "runner/HostBlocks.h"

/// Registers a cancel in progress and keeps the execution that it found.
class CancellableExecution::Call
{
public:
    explicit Call(CancellableExecution& owner) : _owner(owner)
    {
        const std::lock_guard lock(_owner._mutex);
        _number = _owner._lastCall + 1;
        _owner._calls.push_back({_number, std::this_thread::get_id()});
        _owner._lastCall = _number;
        execution = _owner._open;
    }
    ~Call()
    {
        // Release it before the cancel counts as ended: the waiting thread must be the one that
        // deletes it.
        execution.reset();
        // Notify under the lock: a waiting thread may destroy the owner as soon as it has the lock.
        const std::lock_guard lock(_owner._mutex);
        std::erase_if(_owner._calls,
                      [this](const CallEntry& call) { return call.number == _number; });
        _owner._callEnded.notify_all();
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    ExecutionPointer execution;

private:
    CancellableExecution& _owner;
    std::uint64_t _number = 0;
};

CancellableExecution::CancellableExecution()
{
    constexpr std::size_t kUsualCalls = 8;
    _calls.reserve(kUsualCalls);
}

CancellableExecution::~CancellableExecution()
{
    close();
}

void CancellableExecution::hold(std::unique_ptr<EmbeddedHV::Execution> execution)
{
    _execution = std::move(execution);
}

void CancellableExecution::open()
{
    reach(_execution);
}

std::shared_ptr<EmbeddedHV::Execution> CancellableExecution::take()
{
    close();
    return std::move(_execution);
}

void CancellableExecution::close()
{
    reach(nullptr);
}

/// Later calls see `execution`. Waits for earlier calls except those of this thread: the engine may
/// call back from within a cancel.
void CancellableExecution::reach(ExecutionPointer execution)
{
    std::unique_lock lock(_mutex);
    _open.swap(execution);
    const std::uint64_t last = _lastCall;
    const std::thread::id self = std::this_thread::get_id();
    _callEnded.wait(lock, [&] {
        return std::none_of(_calls.begin(), _calls.end(), [&](const CallEntry& call) {
            return call.number <= last && call.thread != self;
        });
    });
}

void CancellableExecution::cancel(bool endsRun)
{
    const Call call(*this);
    if (call.execution != nullptr) {
        const JavaThreadScope thread;
        call.execution->cancel(thread.env());
    }
    if (endsRun)
        endHostRun();
    _stopped = true;
}
