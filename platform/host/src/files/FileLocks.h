#pragma once

#include <string>

/// Access to a file, as other processes and the file system allow it.
struct FileLocks
{
    bool inUse = false;   ///< another process holds a record lock
    bool writable = true; ///< it can be opened for writing
};

/// Tests a regular file, in native spelling. Keeps all locks of this process: the system drops them
/// when any descriptor of the file is closed, so if the process has the file open, that descriptor
/// is used.
FileLocks probeFileLocks(const std::string& native);
