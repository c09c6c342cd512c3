#pragma once

#include <string>

#include "support/HvintegExport.h"

/// Path conversions. The host writes paths with backslashes; the engine takes URLs with forward
/// slashes. The functions work on the text and do not access the disk. They do not fail. Any
/// thread.

/// Converts to the host's spelling: replaces every "/" by a backslash. With `trailingSeparator`, a
/// non-empty result ends in a backslash.
HVINTEG_EXPORT std::string FormalizeFilePath(const std::string& path, bool trailingSeparator);

/// Joins two parts of a host path. Drops one leading backslash of the second part unless the first
/// part is empty: c:/a and /b give c:\a\b.
HVINTEG_EXPORT std::string JoinFilePath(const std::string& first, const std::string& second);

/// Converts to the engine's spelling: C:\data\a.sav with the protocol "file" gives
/// file:///C:/data/a.sav. Path and result are in the host's encoding.
///
/// A path that begins with the protocol, in any letter case, gets no second one. With the protocol
/// "file" a "/" always precedes the path, so file:///x becomes /file:///x.
HVINTEG_EXPORT std::string NormalizeHvlPath(const std::string& path, const std::string& protocol);
/// Converts a path in the host's encoding to the engine's spelling, in UTF-8; otherwise as
/// NormalizeHvlPath.
HVINTEG_EXPORT std::string NormalizeHvlPathU(const std::string& path, const std::string& protocol);

/// Returns the part behind the last separator of either kind. `directory` receives the rest with
/// the separator, or becomes empty.
HVINTEG_EXPORT std::string SeparateFileName(const std::string& path, std::string& directory);
