#include "datafile/PendingFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/FileDescriptor.h"
#include "datafile/NativePath.h"

namespace datafile {
namespace {

/// No name of this process repeats, and hardly one of another process.
std::string unfinishedName(const std::string& destination)
{
    static std::atomic<unsigned> counter = 0;
    static const unsigned seed = std::random_device{}();
    // Beside the target, since a rename must not cross file systems; and short enough for a name.
    return folderOf(destination) + "/." + fileNameOf(destination).substr(0, 180) + "." +
           std::to_string(getpid()) + "-" + std::to_string(seed) + "-" + std::to_string(++counter) +
           ".part";
}

} // namespace

PendingFile::PendingFile(std::string destination, std::string step)
    : _destination(std::move(destination)), _step(std::move(step)),
      _path(unfinishedName(_destination))
{
    struct stat state = {};
    const std::string folder = folderOf(_destination);
    if (stat(folder.c_str(), &state) != 0 || !S_ISDIR(state.st_mode))
        throw Fault(faults::kFolderMissing,
                    placeOf(_step, _destination) + "there is no folder " + folder);
    const bool exists = stat(_destination.c_str(), &state) == 0;
    if (!exists && errno != ENOENT)
        refuse(_step, _destination, errno);
    if (fileNameOf(_destination).empty() || (exists && S_ISDIR(state.st_mode)))
        throw Fault(faults::kFileIsFolder,
                    placeOf(_step, _destination) + "this is a folder, not a file");
    // A device must not be replaced by a file of its name.
    if (exists && !S_ISREG(state.st_mode))
        throw Fault(faults::kFileUnwritable,
                    placeOf(_step, _destination) + "this is not a regular file");
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        refuse(_step, _destination, errno);
}

PendingFile::~PendingFile()
{
    if (!_committed)
        std::remove(_path.c_str());
}

void PendingFile::refuse(const std::string& step, const std::string& path, int code)
{
    const bool full = code == ENOSPC || code == EDQUOT || code == EFBIG;
    throw Fault(full ? faults::kDiskFull : faults::kFileUnwritable,
                placeOf(step, path) + (full ? "there is no room left for the file"
                                            : "the file cannot be written: " +
                                                  std::generic_category().message(code)));
}

void PendingFile::write(const std::string& text)
{
    const FileDescriptor file(open(_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!file || !file.writeAll(text.data(), text.size()))
        refuse(_step, _destination, errno);
}

void PendingFile::commit()
{
    if (std::rename(_path.c_str(), _destination.c_str()) != 0)
        refuse(_step, _destination, errno);
    _committed = true;
}

void PendingFile::revoke()
{
    if (_committed)
        std::remove(_destination.c_str());
}

} // namespace datafile
