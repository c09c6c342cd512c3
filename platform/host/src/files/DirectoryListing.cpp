#include <algorithm>
#include <filesystem>
#include <vector>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "files/HostPath.h"
#include "files/NameMask.h"

/// All names are read at once, because a caller may remove entries during the iteration.
struct DirectoryListing::Impl
{
    std::vector<std::string> names;
    std::size_t next = 0;
};

DirectoryListing::DirectoryListing(const std::string& directory, const std::string& mask)
    : _impl(std::make_unique<Impl>())
{
    const std::string native = ExtNameStr(directory).GetNative();
    if (native.find('\0') != std::string::npos)
        return;
    const std::string utf8Mask = nameToUtf8(mask);
    std::error_code error;
    std::filesystem::directory_iterator entry(native, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        // A name with a backslash, or outside the host's encoding, could not be opened by its
        // listed name.
        const auto generic = nameFromUtf8(name);
        if (generic && name.find('\\') == std::string::npos && matchesMask(name, utf8Mask))
            _impl->names.push_back(*generic);
    }
    std::sort(_impl->names.begin(), _impl->names.end());
}

DirectoryListing::~DirectoryListing() = default;

bool DirectoryListing::Next(std::string& name)
{
    if (_impl->next == _impl->names.size())
        return false;
    name = _impl->names[_impl->next++];
    return true;
}
