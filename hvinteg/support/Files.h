#pragma once

#include <string>

#include "support/HvintegExport.h"

/// File operations on host paths. They report failures as false. Names are in the host's encoding.
/// Any thread.

/// Returns a path that does not exist yet: `path` itself or, for a.sav, the first free one of
/// a_1.sav, a_2.sav and so on. The number goes before the last "." of the whole text, even if that
/// is in a directory name. The check is serialised within this process. It reserves nothing: the
/// name is taken when the caller creates the file.
HVINTEG_EXPORT std::string FormUniqueFileName(const std::string& path);

/// Creates one directory level, no parents. Returns false if that fails or if the path exists
/// already.
HVINTEG_EXPORT bool MakeDir(const std::string& path);

/// Removes a directory tree. Removes links in it, not their targets. Returns true if the directory
/// is gone or did not exist. Removals are serialised within this process.
HVINTEG_EXPORT bool RemoveDir(const std::string& path);

/// Copies `source` over `target`. Returns true if both files opened; does not detect a failure
/// during the copy. If the source does not open, the target is unchanged. If both paths are the
/// same file, returns true and changes nothing.
HVINTEG_EXPORT bool StatCopyFile(const std::string& target, const std::string& source);
