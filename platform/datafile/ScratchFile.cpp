#include "datafile/ScratchFile.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "datafile/PrivateFolder.h"

namespace datafile {

ScratchFile::ScratchFile(const std::string& folder)
{
    std::error_code ignored; // mkstemp reports the reason
    makeOwnersFolders(folder, ignored);
    std::string name = folder + "/hvscratch-XXXXXX";
    _file = base::FileDescriptor(mkostemp(name.data(), O_CLOEXEC));
    if (!_file)
        throw std::system_error(errno, std::generic_category(), "a scratch file in " + folder);
    // A file without a name disappears however the process ends.
    unlink(name.c_str());
}

std::string ScratchFile::path() const
{
    return "/proc/self/fd/" + std::to_string(_file.get());
}

void ScratchFile::rewind() const
{
    if (lseek(_file.get(), 0, SEEK_SET) != 0)
        throw std::system_error(errno, std::generic_category(), "a scratch file");
}

} // namespace datafile
