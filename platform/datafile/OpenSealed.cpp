#include "datafile/OpenSealed.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>

#include "datafile/InputFile.h"

namespace datafile {

std::shared_ptr<ScratchFile> openSealed(const std::string& path, const std::string& password,
                                        const std::string& scratchFolder,
                                        const SealedFileStep& step)
{
    const base::FileDescriptor sealed(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!sealed)
        throw std::system_error(errno, std::generic_category(), path);
    auto plain = std::make_shared<ScratchFile>(scratchFolder);
    openSealedFile(sealed.get(), plain->descriptor(), password, step);
    return plain;
}

} // namespace datafile
