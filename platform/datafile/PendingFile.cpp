#include "datafile/PendingFile.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "base/FileDescriptor.h"
#include "base/NativePath.h"
#include "datafile/PrivateFolder.h"

namespace datafile {
namespace {

constexpr mode_t kNewFileMode = 0666; // minus the process's umask
constexpr mode_t kPrivateFileMode = 0600;

/// Flushes a rename to disk. A failure does not undo the rename.
void syncFolder(const std::string& folder)
{
    const base::FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened)
        fsync(opened.get());
}

} // namespace

PendingFile::PendingFile(std::string destination, std::string step)
    : _destination(std::move(destination)), _step(std::move(step)),
      _target(outputTarget(_destination, _step))
{
}

const std::string& PendingFile::path()
{
    if (_part)
        return _part.path();
    try {
        _part = base::PartFile(_target.path, _target.replaced ? kPrivateFileMode : kNewFileMode);
    } catch (const std::system_error& error) {
        refuse(_step, _destination, error.code().value());
    }
    if (_target.replaced && !keepOwnership(_part.descriptor(), *_target.replaced))
        refuse(_step, _destination, errno);
    return _part.path();
}

void PendingFile::write(const std::string& text)
{
    const base::FileDescriptor file(open(path().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!file || !file.writeAll(text.data(), text.size()))
        refuse(_step, _destination, errno);
}

void PendingFile::commit()
{
    path(); // creates an empty file if nothing was written
    // Before the rename, because nothing may fail after it.
    const std::string folder = base::folderOf(_target.path);
    // A system crash must not leave the new name with a part of the content. Temporary files are
    // lost then, and flushing them can take longer than the job.
    const bool isLasting = !isPrivateFolder(folder);
    if (isLasting && !_part.sync() && errno != EINVAL && errno != ENOTSUP)
        refuse(_step, _destination, errno);
    if (std::rename(_part.path().c_str(), _target.path.c_str()) != 0)
        refuse(_step, _destination, errno);
    _part.release();
    _committed = true;
    if (isLasting)
        syncFolder(folder);
}

void PendingFile::revoke()
{
    if (_committed)
        std::remove(_target.path.c_str());
}

} // namespace datafile
