#pragma once

/// Makes the n-th allocation or file operation of this system's own code fail.
///
/// The library defines the functions of the C and C++ libraries that allocate and that work on
/// files, so it must come before them: link it first, or preload it. It decides by return addresses
/// whose call it is. A call that reaches the C or C++ library from our code through a small helper
/// library, such as the one for XML, counts as ours. Calls of the Java virtual machine and of GDAL
/// never count.
///
/// A program that is not linked with it names the fault in the environment:
/// HV_FAULT=write:17 or HV_FAULT=write:17:database. HV_FAULT_REPORT names a file that receives
/// "calls delivered site" when the process ends.
namespace faultlayer {

enum class Kind
{
    None,
    New,    ///< operator new throws std::bad_alloc
    Malloc, ///< malloc, calloc, realloc and aligned allocation: ENOMEM
    Open,   ///< open, creat, fopen: ENOSPC if it may create the file, else EMFILE
    Write,  ///< write, pwrite, writev, fwrite, fflush: ENOSPC. Never on standard error
    Sync,   ///< fsync, fdatasync: EIO
    Rename, ///< rename, renameat: EIO
    Read,   ///< read, pread, readv, fread: EIO
    Thread  ///< pthread_create: EAGAIN
};

/// Null for a kind that has no name.
[[gnu::visibility("default")]] const char* nameOf(Kind kind);
/// None for a name that is not known.
[[gnu::visibility("default")]] Kind kindNamed(const char* name);

/// Whose calls count.
enum class Scope
{
    Ours,
    OursAndDatabase
};

/// Starts to count; the call with this number, from 1, fails. 0 counts only. Libraries that the
/// process loads later do not count as ours.
[[gnu::visibility("default")]] void arm(Kind kind, Scope scope, long number);

struct Outcome
{
    long calls = 0;
    bool delivered = false;
    /// Where our code made the call that failed; null if none did.
    const void* site = nullptr;
};
[[gnu::visibility("default")]] Outcome disarm();

} // namespace faultlayer
