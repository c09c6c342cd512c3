#include "FileServices.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "ExtNameStr.h"
#include "base/NativePath.h"
#include "files/FileLocks.h"
#include "files/HostPath.h"
#include "text/Utf16.h"

namespace {

// The absolute native path without ".", "..", doubled or trailing separators. ".." is resolved by
// text, as the host's users expect, not through links. Empty for an invalid name.
std::string absoluteNative(const std::string& name)
{
    const std::string native = nativeSpelling(nameToUtf8(name));
    if (native.empty() || native.find('\0') != std::string::npos)
        return {};
    std::error_code error;
    std::filesystem::path path = native;
    if (base::hasDrive(native))
        // The path is its own root, so ".." cannot lead above the drive.
        path = "/" + native.substr(2);
    else if (path = std::filesystem::absolute(path, error); error)
        return {};
    std::string tidy = path.lexically_normal().string();
    while (tidy.size() > 1 && tidy.back() == '/')
        tidy.pop_back();
    return base::hasDrive(native) ? native.substr(0, 2) + tidy : tidy;
}

// The system's state of a native path; false if it does not exist.
bool stateOf(const std::string& native, struct stat& state)
{
    return ::stat(native.c_str(), &state) == 0;
}

// Root may write everything, but a file without write bits is meant to be protected.
bool isReadOnly(const std::string& native, const struct stat& state)
{
    constexpr mode_t kAnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
    return (state.st_mode & kAnyWriteBit) == 0 || ::access(native.c_str(), W_OK) != 0;
}

// Whether the system accepts the name, even if there is no such file.
bool isTakenByTheSystem(int error)
{
    return error != ENAMETOOLONG && error != ENOTDIR && error != ELOOP && error != EINVAL;
}

} // namespace

int ExpandFileSpecification(const std::string& name, char* buffer, std::size_t length)
{
    const std::string native = absoluteNative(name);
    const auto generic = nameFromUtf8(hostSpelling(native));
    if (native.empty() || !generic || !buffer || generic->size() >= length)
        return 1;
    std::memcpy(buffer, generic->c_str(), generic->size() + 1);
    return 0;
}

int ResolveFileSpecification(const std::string& name, std::string& resolved)
{
    resolved.clear();
    const std::string native = absoluteNative(name);
    if (native.empty())
        return 1;
    std::error_code error;
    const std::filesystem::path path = std::filesystem::canonical(native, error);
    if (error)
        return 1;
    resolved = nameFromUtf8(hostSpelling(path.string())).value_or("");
    return resolved.empty() ? 1 : 0;
}

int ValidateDirSpecification(const std::string& name, std::string& expanded, bool& exists,
                             bool& readOnly)
{
    exists = readOnly = false;
    const std::string native = absoluteNative(name);
    const auto generic = nameFromUtf8(hostSpelling(native));
    expanded = generic.value_or("");
    if (expanded.empty())
        return 1;
    struct stat state = {};
    exists = stateOf(native, state) && S_ISDIR(state.st_mode);
    readOnly = exists && isReadOnly(native, state);
    return 0;
}

int ValidateFileSpecification(const std::string& name, bool& exists)
{
    FileState state;
    const int result = ValidateFileSpecificationEx(name, state);
    exists = state.exists;
    return result;
}

int ValidateFileSpecificationEx(const std::string& name, FileState& state)
{
    state = {};
    const std::string native = absoluteNative(name);
    if (native.empty())
        return 1;
    struct stat found = {};
    state.exists = stateOf(native, found);
    state.valid = state.exists || isTakenByTheSystem(errno);
    if (!state.exists)
        return 0;
    state.readOnly = isReadOnly(native, found);
    // Opening a pipe or device would have effects.
    if (S_ISREG(found.st_mode)) {
        const FileLocks locks = probeFileLocks(native);
        state.inUse = locks.inUse;
        state.locked = !locks.writable && !state.readOnly;
    }
    return 0;
}

FileKind FileAttributesOf(const std::u16string& name)
{
    std::string utf8;
    const bool read = utf16ToUtf8(name, utf8);
    struct stat state = {};
    if (!read || utf8.find('\0') != std::string::npos || !stateOf(nativeSpelling(utf8), state))
        return FileKind::None;
    if (S_ISDIR(state.st_mode))
        return FileKind::Directory;
    return S_ISREG(state.st_mode) ? FileKind::File : FileKind::Special;
}

bool FetchFile::fetch(const std::string& name, std::string& content)
{
    content.clear();
    std::ifstream file;
    ExtNameStr::Open(file, ExtNameStr(name), std::ios::in | std::ios::binary);
    if (!file.is_open())
        return false;
    std::string text;
    char chunk[65536];
    while (file.read(chunk, sizeof(chunk)) || file.gcount() > 0)
        text.append(chunk, static_cast<std::size_t>(file.gcount()));
    // A directory can be opened, but reading it fails.
    if (file.bad())
        return false;
    content = std::move(text);
    return true;
}
