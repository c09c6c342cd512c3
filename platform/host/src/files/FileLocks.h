#pragma once

#include <string>

/// What other processes and the file system let one do with a file.
struct FileLocks
{
    bool inUse = false;   ///< another process holds a record lock
    bool writable = true; ///< it opens for writing
};

/// Asks for a regular file, native spelling. Drops no lock that this process holds: the system
/// drops them all when any descriptor of the file is closed, so where the process has the file
/// open that descriptor is asked instead of a new one.
FileLocks probeFileLocks(const std::string& native);
