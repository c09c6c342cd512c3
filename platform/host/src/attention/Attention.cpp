#include "Attention.h"

#include <atomic>

#include "CommonBlocks.h"

namespace {

// A signal handler may set it, so it must be a lock-free atomic.
std::atomic<int> attentionAsked = 0;
static_assert(std::atomic<int>::is_always_lock_free);

thread_local int armedExits = 0;

} // namespace

void* Workspace()
{
    // Only the address of the handle matters.
    static char workspace = 0;
    return &workspace;
}

void ATNCHK(int* flag)
{
    if (flag)
        *flag = attentionAsked;
}

void ATNJMP(void*)
{
    const bool leave = attentionAsked != 0 || pvGetCmnSys()->runIndicator == -1;
    if (leave && armedExits > 0)
        throw AttentionJump{};
}

void RequestAttention() noexcept
{
    attentionAsked = 1;
}

void ClearAttention() noexcept
{
    attentionAsked = 0;
}

AttentionExit::AttentionExit()
{
    ++armedExits;
}

AttentionExit::~AttentionExit()
{
    --armedExits;
}
