#include "support/Paths.h"

#include <algorithm>

#include "MultiByte.h"
#include "support/Separators.h"
#include "support/Transcoding.h"

std::string FormalizeFilePath(const std::string& path, bool trailingSeparator)
{
    // No code page uses the byte of "/" as part of another character, so bytes may be replaced.
    std::string result = path;
    std::replace(result.begin(), result.end(), '/', '\\');
    if (trailingSeparator && !result.empty() && !endsWithBackslash(result))
        result += '\\';
    return result;
}

std::string JoinFilePath(const std::string& first, const std::string& second)
{
    const std::string head = FormalizeFilePath(first, true);
    const std::string tail = FormalizeFilePath(second, false);
    const bool doubled = !head.empty() && !tail.empty() && tail.front() == '\\';
    return head + (doubled ? tail.substr(1) : tail);
}

std::string NormalizeHvlPath(const std::string& path, const std::string& protocol)
{
    std::string result;
    // Keep an existing protocol.
    if (VEXAMBstrnccmp_A(path.c_str(), protocol.c_str(), protocol.size()) != 0)
        result = protocol + "://";
    if (protocol == "file")
        result += '/';
    std::string tail = path;
    if (VEXAMBstrchr_A(tail.c_str(), '\\') != nullptr)
        VEXAMBStringReplaceChar_A(tail, '\\', '/');
    return result + tail;
}

std::string NormalizeHvlPathU(const std::string& path, const std::string& protocol)
{
    return transcodeToUTF8(NormalizeHvlPath(path, protocol).c_str(), nullptr);
}

std::string SeparateFileName(const std::string& path, std::string& directory)
{
    const std::size_t separator = findLastSeparator(path);
    if (separator == std::string::npos) {
        directory.clear();
        return path;
    }
    // Copy first: `path` and `directory` may be the same object.
    std::string name = path.substr(separator + 1);
    directory = path.substr(0, separator + 1);
    return name;
}
