#pragma once

#include <cstdlib>
#include <new>

// Counts the allocations of each thread, for tests of loops that must not allocate. Include it in
// only one source of a program.
inline thread_local long long allocations = 0;

// Not inline: otherwise the compiler would see a pair of new and free and report a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocations;
    return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
