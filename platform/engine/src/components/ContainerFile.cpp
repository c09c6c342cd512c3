#include "components/ContainerFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>

#include <minizip/zip.h>

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostBytesAtOnce = std::size_t{1} << 30;
/// Where 32 bits do not hold the size, the archive needs the larger form of its entries.
constexpr std::size_t kSmallEntry = std::numeric_limits<std::uint32_t>::max();

/// Closes an archive that was given up; a whole one is closed by its writer, which looks at the
/// outcome.
struct Closing
{
    void operator()(void* archive) const { zipClose(archive, nullptr); }
};

bool writeAll(zipFile archive, const std::string& content)
{
    for (std::size_t at = 0; at < content.size(); at += kMostBytesAtOnce) {
        const std::size_t size = std::min(kMostBytesAtOnce, content.size() - at);
        if (zipWriteInFileInZip(archive, content.data() + at, static_cast<unsigned>(size)) !=
            ZIP_OK)
            return false;
    }
    return true;
}

} // namespace

void ContainerFile::refuse(int code) const
{
    PendingFile::refuse(_component, destination(), code != 0 ? code : EIO);
}

void ContainerFile::write(const std::string& content)
{
    // The archive library tells that it failed and not why; an older reason must not stand for it.
    errno = 0;
    std::unique_ptr<void, Closing> archive(zipOpen64(_file.path().c_str(), APPEND_STATUS_CREATE));
    if (!archive)
        refuse(errno);
    const zip_fileinfo information = {};
    const bool written =
        zipOpenNewFileInZip64(archive.get(), _member.c_str(), &information, nullptr, 0, nullptr, 0,
                              nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION,
                              content.size() >= kSmallEntry ? 1 : 0) == ZIP_OK &&
        writeAll(archive.get(), content) && zipCloseFileInZip(archive.get()) == ZIP_OK;
    if (!written)
        refuse(errno);
    if (zipClose(archive.release(), nullptr) != ZIP_OK)
        refuse(errno);
}

} // namespace EmbeddedHV
