#pragma once

#include <string>

#include "support/HvintegExport.h"

/// File primitives over host paths. None of them throws; names are in the host's encoding.

/// A path that does not exist yet: `path` itself, or the first of a_1.sav, a_2.sav and so on for
/// a.sav. The number goes before the last "." of the whole text, directories included. Threads of
/// this process ask one after the other, but the name is taken only once its file exists.
HVINTEG_EXPORT std::string FormUniqueFileName(const std::string& path);

/// Creates one directory level, no parents. False if that fails, also for one that exists already.
HVINTEG_EXPORT bool MakeDir(const std::string& path);

/// Removes a directory with all that is in it; a link in it goes, what it leads to stays. True if
/// the directory is gone or was never there. Threads of this process remove one after the other.
HVINTEG_EXPORT bool RemoveDir(const std::string& path);

/// Copies a file over `target`. True if both files opened; a failure on the way is not seen. A
/// missing source leaves the target alone. A copy onto the file itself, under whatever name, is
/// true and changes nothing.
HVINTEG_EXPORT bool StatCopyFile(const std::string& target, const std::string& source);
