#include "settings/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>

#include <unistd.h>

#include "datafile/PrivateFolder.h"
#include "files/HostPath.h"

namespace {

/// The process's folder. Several threads may ask.
class Folder
{
public:
    std::string get();
    bool remove();
    bool isAt(const std::string& native);

private:
    std::mutex _mutex;
    datafile::PrivateFolder _folder;
};

Folder& folder()
{
    static Folder instance;
    return instance;
}

// A new folder in a directory, or none if it cannot be made.
datafile::PrivateFolder makeIn(const std::string& directory)
{
    try {
        return {directory, "vexa-" + std::to_string(getuid()) + "-"};
    } catch (const std::system_error&) {
        return {};
    }
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
    if (!_folder.isOwn()) {
        _folder = makeIn(systemDirectory());
        // A TMPDIR that is not there is a slip of a shell profile, not a reason to stop.
        if (_folder.path().empty())
            _folder = makeIn("/tmp");
    }
    return hostSpelling(_folder.path().empty() ? systemDirectory() : _folder.path());
}

bool Folder::remove()
{
    const std::lock_guard lock(_mutex);
    return _folder.remove();
}

bool Folder::isAt(const std::string& native)
{
    const std::lock_guard lock(_mutex);
    return _folder.isOwn() && _folder.path() == native;
}

} // namespace

bool isPrivateTempDirectory(const std::string& native)
{
    return folder().isAt(native);
}

std::string privateTempDirectory()
{
    return folder().get();
}

bool removePrivateTempDirectory()
{
    return folder().remove();
}
