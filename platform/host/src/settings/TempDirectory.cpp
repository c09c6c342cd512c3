#include "settings/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>

#include <unistd.h>

#include "files/HostPath.h"

namespace {

/// The folder and the process that made it: a child process must not remove its parent's.
struct Folder
{
    std::mutex mutex;
    std::string native;
    pid_t owner = 0;
};

Folder& folder()
{
    static Folder instance;
    return instance;
}

// A new folder in a directory, or nothing if it cannot be made.
std::string makeIn(const std::string& directory)
{
    std::string name = directory + "/vexa-" + std::to_string(getuid()) + "-" +
                       std::to_string(getpid()) + "-XXXXXX";
    // mkdtemp makes it for the owner alone and takes no name that is there.
    return mkdtemp(name.data()) ? name : std::string();
}

std::string systemDirectory()
{
    const char* chosen = std::getenv("TMPDIR");
    if (!chosen || !*chosen)
        return "/tmp";
    // The process may move to another working directory.
    std::error_code error;
    return std::filesystem::absolute(chosen, error).string();
}

} // namespace

std::string privateTempDirectory()
{
    Folder& mine = folder();
    const std::lock_guard lock(mine.mutex);
    if (mine.native.empty() || mine.owner != getpid()) {
        mine.native = makeIn(systemDirectory());
        // A TMPDIR that is not there is a slip of a shell profile, not a reason to stop.
        if (mine.native.empty())
            mine.native = makeIn("/tmp");
        mine.owner = getpid();
    }
    return hostSpelling(mine.native.empty() ? systemDirectory() : mine.native);
}

bool removePrivateTempDirectory()
{
    Folder& mine = folder();
    const std::lock_guard lock(mine.mutex);
    if (mine.native.empty() || mine.owner != getpid())
        return true;
    std::error_code error;
    std::filesystem::remove_all(mine.native, error);
    if (!error)
        mine.native.clear();
    return !error;
}
