#include <cerrno>
#include <cstddef>
#include <new>

#include "Decision.h"

// Replacements for the allocation functions of the C and C++ libraries. The C library's own free
// releases the memory.

using faultlayer::isToFail;
using faultlayer::Kind;

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

#define EXPORTED [[gnu::visibility("default")]]

namespace {

void* outOfMemory()
{
    errno = ENOMEM;
    return nullptr;
}

void* orThrow(void* memory)
{
    return memory ? memory : throw std::bad_alloc();
}

void* newMemory(std::size_t size, const void* caller)
{
    return isToFail(Kind::New, caller) ? nullptr : __libc_malloc(size ? size : 1);
}

void* newAligned(std::size_t size, std::align_val_t alignment, const void* caller)
{
    return isToFail(Kind::New, caller)
               ? nullptr
               : __libc_memalign(static_cast<std::size_t>(alignment), size ? size : 1);
}

} // namespace

#define CALLER __builtin_return_address(0)

EXPORTED void* operator new(std::size_t size)
{
    return orThrow(newMemory(size, CALLER));
}
EXPORTED void* operator new[](std::size_t size)
{
    return orThrow(newMemory(size, CALLER));
}
EXPORTED void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return newMemory(size, CALLER);
}
EXPORTED void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return newMemory(size, CALLER);
}
EXPORTED void* operator new(std::size_t size, std::align_val_t alignment)
{
    return orThrow(newAligned(size, alignment, CALLER));
}
EXPORTED void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return orThrow(newAligned(size, alignment, CALLER));
}

extern "C" {
EXPORTED void* malloc(std::size_t size)
{
    return isToFail(Kind::Malloc, CALLER) ? outOfMemory() : __libc_malloc(size);
}
EXPORTED void* calloc(std::size_t count, std::size_t size)
{
    return isToFail(Kind::Malloc, CALLER) ? outOfMemory() : __libc_calloc(count, size);
}
EXPORTED void* realloc(void* memory, std::size_t size)
{
    return isToFail(Kind::Malloc, CALLER) ? outOfMemory() : __libc_realloc(memory, size);
}
EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return isToFail(Kind::Malloc, CALLER) ? outOfMemory() : __libc_memalign(alignment, size);
}
EXPORTED int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    if (isToFail(Kind::Malloc, CALLER))
        return ENOMEM;
    void* const made = __libc_memalign(alignment, size);
    if (!made)
        return ENOMEM;
    *memory = made;
    return 0;
}
}
