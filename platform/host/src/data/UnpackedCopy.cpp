#include "data/UnpackedCopy.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <string_view>
#include <type_traits>

#include <zlib.h>

#include "FileServices.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "text/CodePage.h"

namespace {

constexpr unsigned kUnpackedBlock = 256 * 1024;

struct GzipCloser
{
    void operator()(gzFile file) const { gzclose(file); }
};
using GzipFile = std::unique_ptr<std::remove_pointer_t<gzFile>, GzipCloser>;

} // namespace

bool isGzip(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::array<char, 2> begin{};
    file.read(begin.data(), begin.size());
    return std::string_view(begin.data(), static_cast<std::size_t>(file.gcount())) == "\x1f\x8b";
}

std::shared_ptr<datafile::ScratchFile> unpackedCopy(const std::string& path,
                                                    const std::function<void()>& look)
{
    const GzipFile source(gzopen(path.c_str(), "rbe"));
    if (!source)
        failToRead(path);
    auto target =
        std::make_shared<datafile::ScratchFile>(base::nativePath(hostToUtf8(GetVexaTempPath())));
    std::string block(kUnpackedBlock, '\0');
    int got = 0;
    while ((got = gzread(source.get(), block.data(), kUnpackedBlock)) > 0) {
        look();
        if (!target->write(std::string_view(block).substr(0, static_cast<std::size_t>(got))))
            failToCopy(path, "unpacked");
    }
    // A cut file is an error only after its last block.
    int state = Z_OK;
    gzerror(source.get(), &state);
    if (state != Z_OK && state != Z_STREAM_END)
        throw CaseFileError(path, ": the file is damaged: it cannot be unpacked to its end");
    target->rewind();
    return target;
}
