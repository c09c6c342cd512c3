#pragma once

#include <string>

/// The private temporary directory of this process, accessible to its owner only. The first call
/// creates it in TMPDIR or the system's directory; it is removed at exit. In the host's spelling,
/// UTF-8. If it cannot be created, the system's directory itself.
std::string privateTempDirectory();

/// Removes it and its content, if this process created one. Returns false if something remains.
bool removePrivateTempDirectory();

/// Whether the folder, in native spelling, is the private directory.
bool isPrivateTempDirectory(const std::string& folder);
