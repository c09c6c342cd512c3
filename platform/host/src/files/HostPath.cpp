#include "files/HostPath.h"

#include <algorithm>

#include "text/CodePage.h"

std::string nativeSpelling(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string hostSpelling(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string nameToUtf8(const std::string& generic)
{
    const auto page = hostCodePage();
    if (page->isUtf8())
        return generic;
    std::string utf8;
    page->toUtf8(generic, utf8);
    return utf8;
}

std::optional<std::string> nameFromUtf8(const std::string& utf8)
{
    const auto page = hostCodePage();
    if (page->isUtf8())
        return utf8;
    std::string generic;
    if (!page->fromUtf8(utf8, generic))
        return std::nullopt;
    return generic;
}
