#include "settings/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>

#include <unistd.h>

#include "datafile/PrivateFolder.h"
#include "files/HostPath.h"

namespace {

/// The folder of the process. Thread-safe.
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

// Creates a folder in a directory; no folder if that fails.
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
    // The process may change its working directory.
    std::error_code error;
    return std::filesystem::absolute(chosen, error).string();
}

std::string Folder::get()
{
    const std::lock_guard lock(_mutex);
    // A child process gets its own folder, because each removes its folder at its end.
    if (!_folder.isOwn()) {
        _folder = makeIn(systemDirectory());
        // A missing TMPDIR is a mistake in a shell profile, not a reason to stop.
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
