#include <atomic>
#include <exception>
#include <mutex>

#include "Attention.h"
#include "Journal.h"

namespace {

/// Ignored without memory, because destructors call this.
void note(const char* what) noexcept
{
    try {
        HostJournal::instance().add({HostJournal::Kind::Interrupt, what});
    } catch (const std::exception&) {
        return;
    }
}

} // namespace

struct VexaAdapter::Impl
{
    // Held while a handler is called, so that a handler may be destroyed after it is removed.
    // Recursive, because a handler may call the adapter.
    std::recursive_mutex calling;
    std::atomic<InterruptHandler*> handler = nullptr;
};

VexaAdapter::VexaAdapter() : _impl(std::make_unique<Impl>()) {}
VexaAdapter::~VexaAdapter() = default;

VexaAdapter::InterruptHandler* VexaAdapter::getInterruptHandler() const
{
    return _impl->handler;
}

void VexaAdapter::setInterruptHandler(InterruptHandler* handler)
{
    {
        const std::lock_guard lock(_impl->calling);
        _impl->handler = handler;
    }
    note(handler ? "set" : "clear");
}

void VexaAdapter::interrupt()
{
    RequestAttention();
    note("fire");
    const std::lock_guard lock(_impl->calling);
    if (InterruptHandler* handler = _impl->handler)
        handler->interrupt();
}

VexaAdapter* GetAdapter()
{
    static VexaAdapter adapter;
    return &adapter;
}
