#pragma once

#include <cstddef>
#include <string>

/// Separators of a path in the host's encoding. In some code pages the code of the backslash is
/// also the second byte of a letter. The functions therefore step by characters.

/// Position of the last backslash or "/", or npos.
std::size_t findLastSeparator(const std::string& path);
/// Whether the last character is a backslash.
bool endsWithBackslash(const std::string& path);
/// Removes all separators from the end.
void trimTrailingSeparators(std::string& path);
