#include "support/Files.h"

#include <filesystem>
#include <fstream>
#include <mutex>
#include <system_error>

#include "CriticalSection.h"
#include "ExtNameStr.h"
#include "support/Conversions.h"
#include "support/DirectorySpecific.h"
#include "support/FileSpecific.h"
#include "support/Paths.h"

namespace {

// Two locks, so that removing a large tree does not delay the search for a name.
CriticalSection& uniqueNameLock()
{
    static CriticalSection lock;
    return lock;
}

CriticalSection& removalLock()
{
    static CriticalSection lock;
    return lock;
}

void removeEntry(const std::string& path, bool isDirectory)
{
    // A link to a directory looks like a directory. remove() deletes links and empty directories,
    // so that only real directories are entered.
    const bool removed = ExtNameStr::remove(ExtNameStr(path)) == 0;
    if (!removed && isDirectory)
        RemoveDir(path);
}

// Whether both names are the same existing file.
bool isSameFile(const ExtNameStr& left, const ExtNameStr& right)
{
    std::error_code error;
    return std::filesystem::equivalent(left.GetNative(), right.GetNative(), error) && !error;
}

} // namespace

std::string FormUniqueFileName(const std::string& path)
{
    const std::lock_guard guard(uniqueNameLock());
    if (!FileSpecific(path).Exists())
        return path;
    const std::size_t dot = path.rfind('.');
    const std::string stem = path.substr(0, dot) + '_';
    const std::string extension = dot == std::string::npos ? std::string() : path.substr(dot);
    // The lock serialises threads of this process. The caller creates the file later.
    for (int number = 1;; ++number) {
        std::string candidate = stem;
        candidate += Integer2String(number);
        candidate += extension;
        if (!FileSpecific(candidate).Exists())
            return candidate;
    }
}

bool MakeDir(const std::string& path)
{
    return ExtNameStr::mkdir(ExtNameStr(path)) == 0;
}

bool RemoveDir(const std::string& path)
{
    const std::lock_guard guard(removalLock());
    DirectorySpecific directory(path);
    if (!directory.Exists())
        return true;
    std::string name;
    bool isDirectory = false;
    for (bool found = directory.BrowseFile(); found; found = directory.Next()) {
        directory.GetFileSpec(name, isDirectory);
        removeEntry(directory.ExpandPath() + name, isDirectory);
    }
    return ExtNameStr::rmdir(ExtNameStr(path)) == 0;
}

bool StatCopyFile(const std::string& target, const std::string& source)
{
    const ExtNameStr from(FormalizeFilePath(source, false));
    const ExtNameStr to(FormalizeFilePath(target, false));
    std::ifstream input;
    ExtNameStr::Open(input, from, std::ios::in | std::ios::binary);
    if (!input.is_open())
        return false;
    // Opening for output would truncate the file before it is read.
    if (isSameFile(from, to))
        return true;
    std::ofstream output;
    ExtNameStr::Open(output, to, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!output.is_open())
        return false;
    // An empty source sets the failbit, but the copy is correct.
    output << input.rdbuf();
    return true;
}
