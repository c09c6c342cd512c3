#pragma once

/// Tells the thread sanitizer where the database passes work from one thread to another. The
/// database is not compiled with the sanitizer, so the sanitizer misses its synchronisation. In
/// other builds this is empty.
///
/// Each border has an address. Everything that a thread does before handOver(address) happens
/// before everything that a thread does after takeOver(address).
namespace EmbeddedHV::border {

#ifdef __SANITIZE_THREAD__
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);

inline void handOver(const void* what) noexcept
{
    __tsan_release(const_cast<void*>(what));
}

inline void takeOver(const void* what) noexcept
{
    __tsan_acquire(const_cast<void*>(what));
}
#else
inline void handOver(const void*) noexcept {}
inline void takeOver(const void*) noexcept {}
#endif

/// A call of the database into our code: takes over at its start and hands over at its end.
class Call
{
public:
    explicit Call(const void* what) noexcept : _what(what) { takeOver(_what); }
    ~Call() { handOver(_what); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

private:
    const void* _what;
};

} // namespace EmbeddedHV::border
