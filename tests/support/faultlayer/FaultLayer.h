#pragma once

/// Makes the n-th allocation or file operation of this system's own code fail.
///
/// The library replaces the functions of the C and C++ libraries that allocate or work on files. So
/// it must come before them: link it first, or preload it. It identifies the caller by its return
/// address. A call from our code through a small helper library, for example the XML library,
/// counts as ours. Calls of the Java virtual machine and of GDAL never count.
///
/// A program that is not linked with it gets the fault from the environment: HV_FAULT=write:17 or
/// HV_FAULT=write:17:database. HV_FAULT_REPORT names a file for the report "calls delivered site",
/// which is written when the process ends.
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

/// The name of a kind; null if it has none.
[[gnu::visibility("default")]] const char* nameOf(Kind kind);
/// The kind with this name; None if it is unknown.
[[gnu::visibility("default")]] Kind kindNamed(const char* name);

/// The code whose calls count.
enum class Scope
{
    Ours,
    OursAndDatabase
};

/// Starts counting. The call with this number, from 1, fails. 0 only counts. Libraries that are
/// loaded later do not count as ours.
[[gnu::visibility("default")]] void arm(Kind kind, Scope scope, long number);

struct Outcome
{
    long calls = 0;
    bool delivered = false;
    /// The place in our code that made the failed call; null if none failed.
    const void* site = nullptr;
};
[[gnu::visibility("default")]] Outcome disarm();

} // namespace faultlayer
