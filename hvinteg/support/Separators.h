#pragma once

#include <cstddef>
#include <string>

/// Separators of a path in the host's encoding. In some code pages the code of the backslash is
/// also the second byte of a letter, so the text is walked by characters, as the host sees them.

/// Where the last character is that is a backslash or "/"; npos if there is none.
std::size_t findLastSeparator(const std::string& path);
/// Whether the last character is a backslash.
bool endsWithBackslash(const std::string& path);
/// Cuts all separators off the end.
void trimTrailingSeparators(std::string& path);
