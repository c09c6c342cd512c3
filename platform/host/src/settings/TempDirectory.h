#pragma once

#include <string>

/// The private temporary directory of this process, for its owner alone: made at the first call,
/// in TMPDIR or the system's own, removed when the process ends by exit. In the host's spelling,
/// UTF-8. Where no folder can be made, the system's directory itself.
std::string privateTempDirectory();

/// Removes it with all that is in it, if this process made one. False if something is left.
bool removePrivateTempDirectory();

/// Whether the folder, native spelling, is that one.
bool isPrivateTempDirectory(const std::string& folder);
