#include "support/Separators.h"

#include <algorithm>

#include "MultiByte.h"

namespace {

/// Searches forward: in the host's code pages a byte is only known from the bytes before it.
std::size_t findLast(const std::string& path, char separator)
{
    std::size_t last = std::string::npos;
    const char* const begin = path.c_str();
    // A new character starts after a separator, so the search can continue there.
    for (const char* found = VEXAMBstrchr_A(begin, separator); found != nullptr;
         found = VEXAMBstrchr_A(found + 1, separator))
        last = static_cast<std::size_t>(found - begin);
    return last;
}

} // namespace

std::size_t findLastSeparator(const std::string& path)
{
    const std::size_t backslash = findLast(path, '\\');
    const std::size_t slash = findLast(path, '/');
    if (backslash == std::string::npos || slash == std::string::npos)
        return std::min(backslash, slash);
    return std::max(backslash, slash);
}

bool endsWithBackslash(const std::string& path)
{
    // Test the last byte first, which is enough for almost all paths.
    return !path.empty() && path.back() == '\\' && findLast(path, '\\') == path.size() - 1;
}

void trimTrailingSeparators(std::string& path)
{
    while (!path.empty() && (path.back() == '/' || endsWithBackslash(path)))
        path.pop_back();
}
