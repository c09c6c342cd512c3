#pragma once

#include <string>

#include "support/HvintegExport.h"

/// Two spellings of a path meet in this library. The host writes backslashes; the engine takes URLs
/// with forward slashes. All functions here work on the text alone, on any thread.

/// The host's spelling: every "/" becomes a backslash. With `trailingSeparator` a path that is not
/// empty ends in a backslash.
HVINTEG_EXPORT std::string FormalizeFilePath(const std::string& path, bool trailingSeparator);

/// Two parts of a host path as one. One leading backslash of the second part is dropped, unless the
/// first part is empty: c:/a and /b give c:\a\b.
HVINTEG_EXPORT std::string JoinFilePath(const std::string& first, const std::string& second);

/// The engine's spelling, in the host's encoding and in UTF-8: C:\data\a.sav with the protocol
/// "file" gives file:///C:/data/a.sav.
///
/// A path that begins with the protocol, in any letter case, counts as having one. The protocol
/// "file" puts a "/" before the path in any case, so file:///x becomes /file:///x.
HVINTEG_EXPORT std::string NormalizeHvlPath(const std::string& path, const std::string& protocol);
HVINTEG_EXPORT std::string NormalizeHvlPathU(const std::string& path, const std::string& protocol);

/// The part of a path behind its last separator of either kind; `directory` receives the rest,
/// separator included, or becomes empty.
HVINTEG_EXPORT std::string SeparateFileName(const std::string& path, std::string& directory);
