#include "components/ContainerFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>

#include <minizip/zip.h>

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostBytesAtOnce = std::size_t{1} << 30;
/// A larger entry needs the Zip64 format.
constexpr std::size_t kSmallEntry = std::numeric_limits<std::uint32_t>::max();

/// Closes an abandoned archive. The writer closes a complete archive itself and checks the result.
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

bool writeMember(zipFile archive, const ContainerMember& member)
{
    const zip_fileinfo information = {};
    return zipOpenNewFileInZip64(archive, member.name.c_str(), &information, nullptr, 0, nullptr, 0,
                                 nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION,
                                 member.content.size() >= kSmallEntry ? 1 : 0) == ZIP_OK &&
           writeAll(archive, member.content) && zipCloseFileInZip(archive) == ZIP_OK;
}

} // namespace

void ContainerFile::refuse(int code) const
{
    PendingFile::refuse(_component, destination(), code != 0 ? code : EIO);
}

void ContainerFile::write(const std::vector<ContainerMember>& members)
{
    // The archive library reports failures without a reason. Clear any older error code, so that it
    // is not shown.
    errno = 0;
    std::unique_ptr<void, Closing> archive(zipOpen64(_file.path().c_str(), APPEND_STATUS_CREATE));
    if (!archive)
        refuse(errno);
    for (const ContainerMember& member : members)
        if (!writeMember(archive.get(), member))
            refuse(errno);
    if (zipClose(archive.release(), nullptr) != ZIP_OK)
        refuse(errno);
}

} // namespace EmbeddedHV
