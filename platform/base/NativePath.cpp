#include "base/NativePath.h"

#include <algorithm>

namespace base {

std::string nativePath(const std::string& hostPath)
{
    std::string path = hostPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string fileNameOf(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

std::string folderOf(const std::string& path)
{
    const auto separator = path.find_last_of('/');
    if (separator == std::string::npos)
        return ".";
    return separator == 0 ? "/" : path.substr(0, separator);
}

bool hasDrive(std::string_view path)
{
    return path.size() >= 2 && path[1] == ':' &&
           ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
}

} // namespace base
