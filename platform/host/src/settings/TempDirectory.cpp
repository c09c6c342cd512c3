#include "settings/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>

#include <unistd.h>

#include "files/HostPath.h"

namespace {

/// The folder and the process that made it: a child process must not remove its parent's.
class Folder
{
public:
    ~Folder() { remove(); }
    std::string get();
    bool remove();

private:
    std::mutex _mutex;
    std::string _native;
    pid_t _owner = 0;
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

std::string Folder::get()
{
    const std::lock_guard lock(_mutex);
    // A child process gets a folder of its own: each removes its folder when it ends.
    if (_native.empty() || _owner != getpid()) {
        _native = makeIn(systemDirectory());
        // A TMPDIR that is not there is a slip of a shell profile, not a reason to stop.
        if (_native.empty())
            _native = makeIn("/tmp");
        _owner = getpid();
    }
    return hostSpelling(_native.empty() ? systemDirectory() : _native);
}

bool Folder::remove()
{
    const std::lock_guard lock(_mutex);
    if (_native.empty() || _owner != getpid())
        return true;
    std::error_code error;
    std::filesystem::remove_all(_native, error);
    if (!error)
        _native.clear();
    return !error;
}

} // namespace

std::string privateTempDirectory()
{
    return folder().get();
}

bool removePrivateTempDirectory()
{
    return folder().remove();
}
