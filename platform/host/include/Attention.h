#pragma once

#include <memory>

#include "HostExport.h"

/// The handle for ATNJMP.
HOST_API void* Workspace();
/// Sets the flag non-zero if the user asked for a stop, 0 if not. Any thread.
HOST_API void ATNCHK(int* flag);
/// The host's way out of a stopped procedure. With a way out armed (AttentionExit) and a stop asked
/// for, or the run indicator at -1, it does not come back; otherwise it does.
HOST_API void ATNJMP(void* workspace);

/// Marks that the user asked for a stop; async-signal-safe, so that a signal handler may call it.
HOST_API void RequestAttention() noexcept;
/// Forgets the stop, when the host has dealt with it.
HOST_API void ClearAttention() noexcept;

/// What ATNJMP throws while an AttentionExit is alive on the thread.
struct HOST_API AttentionJump
{
};

/// Arms the host's way out for its scope, on the thread that makes it.
class HOST_API AttentionExit
{
public:
    AttentionExit();
    ~AttentionExit();
    AttentionExit(const AttentionExit&) = delete;
    AttentionExit& operator=(const AttentionExit&) = delete;
};

/// The host's adapter: it tells whoever runs a job that the user wants it to stop.
class HOST_API VexaAdapter
{
public:
    /// Called when the user stops a job, maybe on another thread.
    class HOST_API InterruptHandler
    {
    public:
        virtual ~InterruptHandler() = default;
        /// The user wants the job to stop; wants it to go on after all.
        virtual void interrupt() = 0;
        virtual void resume() {}
    };

    VexaAdapter();
    ~VexaAdapter();
    VexaAdapter(const VexaAdapter&) = delete;
    VexaAdapter& operator=(const VexaAdapter&) = delete;

    /// The handler in force; null for none. Borrowed: whoever sets one takes it out again.
    InterruptHandler* getInterruptHandler() const;
    /// Waits for a call of the handler that is under way on another thread; so once it is back, the
    /// earlier handler may go.
    void setInterruptHandler(InterruptHandler* handler);
    /// Marks the attention and calls the handler in force, if any, on the calling thread. Takes a
    /// lock, so a signal handler must not call it; a thread that waits for signals may.
    void interrupt();

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// The adapter of the process.
HOST_API VexaAdapter* GetAdapter();
