#pragma once

#include <memory>

#include "HostExport.h"

/// Returns the handle for ATNJMP. Any thread.
HOST_API void* Workspace();
/// Sets `flag` to a non-zero value if the user requests a stop, otherwise to 0. Ignores null. Any
/// thread.
HOST_API void ATNCHK(int* flag);
/// Leaves a stopped procedure. Throws AttentionJump, and does not return, if the thread has an
/// AttentionExit and either the user requests a stop or the run indicator is -1. Otherwise returns
/// without effect.
HOST_API void ATNJMP(void* workspace);

/// Records that the user requests a stop. Async-signal-safe: a signal handler may call it.
HOST_API void RequestAttention() noexcept;
/// Clears the request, after the host has handled it. Async-signal-safe.
HOST_API void ClearAttention() noexcept;

/// The exception of ATNJMP.
struct HOST_API AttentionJump
{
};

/// Lets ATNJMP throw on the thread that creates the object, as long as the object lives.
class HOST_API AttentionExit
{
public:
    /// Lets ATNJMP throw on the calling thread. Objects on one thread may be nested.
    AttentionExit();
    ~AttentionExit();
    AttentionExit(const AttentionExit&) = delete;
    AttentionExit& operator=(const AttentionExit&) = delete;
};

/// The host's adapter: reports to whoever runs a job that the user requests a stop. Any thread.
class HOST_API VexaAdapter
{
public:
    /// The receiver of a stop request. May be called on another thread.
    class HOST_API InterruptHandler
    {
    public:
        virtual ~InterruptHandler() = default;
        /// The user requests that the job stops.
        virtual void interrupt() = 0;
        /// The user withdraws the request. Does nothing by default.
        virtual void resume() {}
    };

    /// An adapter without a handler. Procedures use that of GetAdapter.
    VexaAdapter();
    ~VexaAdapter();
    VexaAdapter(const VexaAdapter&) = delete;
    VexaAdapter& operator=(const VexaAdapter&) = delete;

    /// The current handler; null for none. Borrowed.
    InterruptHandler* getInterruptHandler() const;
    /// Sets the handler, null for none. The handler is borrowed: whoever sets it removes it. Waits
    /// for a call of the previous handler on another thread, so that the previous handler may be
    /// destroyed afterwards.
    void setInterruptHandler(InterruptHandler* handler);
    /// Records the stop request and calls the current handler, if there is one, on the calling
    /// thread. It takes a lock, so a signal handler must not call it; a thread that waits for
    /// signals may.
    void interrupt();

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// The adapter of the process. Any thread.
HOST_API VexaAdapter* GetAdapter();
