#include <atomic>
#include <cerrno>
#include <filesystem>
#include <random>

#include <sys/stat.h>
#include <unistd.h>

#include "CFAppHost.h"
#include "ExtNameStr.h"
#include "FileServices.h"
#include "files/HostPath.h"
#include "text/KeptStrings.h"

namespace {

constexpr int kMaxTries = 100;

// Unique in this process by the counter, and among processes by id and a random number, because ids
// are reused.
std::string uniquePart()
{
    static std::atomic<unsigned> counter = 0;
    thread_local std::random_device chance;
    return std::to_string(getpid()) + "_" + std::to_string(++counter) + "_" +
           std::to_string(chance());
}

bool isTaken(const std::string& native)
{
    // A dangling link also occupies the name. If the system cannot answer, for example below a
    // file, no other name would be free either.
    struct stat state = {};
    return ::lstat(native.c_str(), &state) == 0;
}

std::string expandedName(const std::string& name)
{
    std::string expanded;
    bool exists = false;
    bool readOnly = false;
    ValidateDirSpecification(name, expanded, exists, readOnly);
    return expanded;
}

} // namespace

const std::string& GetVexaTempPath()
{
    std::string directory = hostSpelling(CFAppHost::getInstance()->getTempDirectory());
    // Test in UTF-8: in the host's encoding a letter may end in the byte of the backslash.
    if (!directory.ends_with('\\'))
        directory += '\\';
    return keepString(nameFromUtf8(directory).value_or(directory));
}

std::string FormTempName(const std::string& prefix)
{
    std::string name;
    do
        name = GetVexaTempPath() + prefix + uniquePart();
    while (isTaken(ExtNameStr(name).GetNative()));
    return name;
}

std::string CreateTempFolder(const std::string& prefix)
{
    constexpr mode_t kOwnerAlone = 0700;
    for (int attempt = 0; attempt < kMaxTries; ++attempt) {
        std::string name = FormTempName(prefix);
        if (::mkdir(ExtNameStr(name).GetNative().c_str(), kOwnerAlone) == 0)
            return name;
        // Another process may take the name meanwhile.
        if (errno != EEXIST)
            break;
    }
    return {};
}

bool RemoveFolderFromTempDir(const std::string& folder)
{
    const std::string expanded = expandedName(folder);
    const std::string root = expandedName(GetVexaTempPath()) + "\\";
    // Refuse paths outside the temporary directory, and the directory itself.
    if (!expanded.starts_with(root) || expanded.size() == root.size())
        return false;
    const std::string native = ExtNameStr(expanded).GetNative();
    std::error_code error;
    return std::filesystem::is_directory(std::filesystem::symlink_status(native, error)) &&
           std::filesystem::remove_all(native, error) > 0 && !error;
}
