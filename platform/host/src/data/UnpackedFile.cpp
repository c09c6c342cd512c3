#include "TextImport.h"

#include <array>
#include <cstddef>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <string_view>
#include <type_traits>

#include <zlib.h>
#include <zstd.h>

#include "base/FileDescriptor.h"
#include "data/CaseFileFault.h"

namespace {

constexpr unsigned kUnpackedBlock = 256 * 1024;
constexpr std::string_view kGzipMark = "\x1f\x8b";
constexpr std::string_view kZstdMark = "\x28\xb5\x2f\xfd";

struct GzipCloser
{
    void operator()(gzFile file) const { gzclose(file); }
};
using GzipFile = std::unique_ptr<std::remove_pointer_t<gzFile>, GzipCloser>;

struct ZstdFreer
{
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
};

bool startsWith(const std::string& path, std::string_view mark)
{
    std::ifstream file(path, std::ios::binary);
    std::array<char, 4> begin{};
    file.read(begin.data(), begin.size());
    return std::string_view(begin.data(), static_cast<std::size_t>(file.gcount()))
        .starts_with(mark);
}

/// Writes one file from another.
class Unpacking
{
public:
    Unpacking(const std::string& path, const std::function<void()>& look, const std::string& target)
        : _path(path), _look(look),
          _target(open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600))
    {
        if (!_target)
            failToCopy(_path, "unpacked");
    }

    void gunzip() const
    {
        const GzipFile source(gzopen(_path.c_str(), "rbe"));
        if (!source)
            failToRead(_path);
        std::string block(kUnpackedBlock, '\0');
        int got = 0;
        while ((got = gzread(source.get(), block.data(), kUnpackedBlock)) > 0)
            write({block.data(), static_cast<std::size_t>(got)});
        // A cut file is an error only after its last block.
        int state = Z_OK;
        gzerror(source.get(), &state);
        if (state != Z_OK && state != Z_STREAM_END)
            failOfDamage();
    }

    void unzstd() const
    {
        const base::FileDescriptor source(open(_path.c_str(), O_RDONLY | O_CLOEXEC));
        const std::unique_ptr<ZSTD_DCtx, ZstdFreer> context(ZSTD_createDCtx());
        if (!source || !context)
            failToRead(_path);
        std::string packed(kUnpackedBlock, '\0');
        std::string block(kUnpackedBlock, '\0');
        std::size_t expected = 0; // 0 at the end of a frame
        ssize_t got = 0;
        while ((got = source.readUpTo(packed.data(), packed.size())) > 0) {
            ZSTD_inBuffer in{packed.data(), static_cast<std::size_t>(got), 0};
            bool isFull = false;
            while (in.pos < in.size || isFull) {
                ZSTD_outBuffer out{block.data(), block.size(), 0};
                expected = ZSTD_decompressStream(context.get(), &out, &in);
                if (ZSTD_isError(expected) != 0)
                    failOfDamage();
                write({block.data(), out.pos});
                isFull = expected != 0 && out.pos == out.size;
            }
        }
        if (got < 0)
            failToRead(_path);
        if (expected != 0)
            failOfDamage();
    }

private:
    void write(std::string_view block) const
    {
        _look();
        if (!_target.writeAll(block.data(), block.size()))
            failToCopy(_path, "unpacked");
    }

    [[noreturn]] void failOfDamage() const
    {
        throw CaseFileError(_path, ": the file is damaged: it cannot be unpacked to its end");
    }

    const std::string& _path;
    const std::function<void()>& _look;
    base::FileDescriptor _target;
};

} // namespace

bool IsPackedFile(const std::string& path)
{
    return startsWith(path, kGzipMark) || startsWith(path, kZstdMark);
}

void UnpackFile(const std::string& path, const std::function<void()>& look,
                const std::string& target)
{
    const Unpacking unpacking(path, look, target);
    if (startsWith(path, kGzipMark))
        unpacking.gunzip();
    else
        unpacking.unzstd();
}
