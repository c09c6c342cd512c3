#include "support/ZipFileFunctions.h"

#include <cstdio>

#include "ExtNameStr.h"

namespace {

std::FILE* fileOf(voidpf stream)
{
    return static_cast<std::FILE*>(stream);
}

// Null if the mode requests neither reading nor writing.
const char* openModeOf(int mode)
{
    if ((mode & ZLIB_FILEFUNC_MODE_READWRITEFILTER) == ZLIB_FILEFUNC_MODE_READ)
        return "rb";
    if ((mode & ZLIB_FILEFUNC_MODE_EXISTING) != 0)
        return "r+b";
    return (mode & ZLIB_FILEFUNC_MODE_CREATE) != 0 ? "wb" : nullptr;
}

voidpf openFile(voidpf, const char* path, int mode)
{
    const char* const openMode = openModeOf(mode);
    if (path == nullptr || openMode == nullptr)
        return nullptr;
    return ExtNameStr::fopen(ExtNameStr(path), openMode);
}

/// The next functions are those of the C library with minizip's signatures.
uLong readFile(voidpf, voidpf stream, void* buffer, uLong size)
{
    return static_cast<uLong>(std::fread(buffer, 1, size, fileOf(stream)));
}

uLong writeFile(voidpf, voidpf stream, const void* buffer, uLong size)
{
    return static_cast<uLong>(std::fwrite(buffer, 1, size, fileOf(stream)));
}

long tellFile(voidpf, voidpf stream)
{
    return std::ftell(fileOf(stream));
}

long seekFile(voidpf, voidpf stream, uLong offset, int origin)
{
    // The offset may come from a damaged archive and be invalid.
    const long distance = static_cast<long>(offset);
    switch (origin) {
    case ZLIB_FILEFUNC_SEEK_CUR:
        return std::fseek(fileOf(stream), distance, SEEK_CUR);
    case ZLIB_FILEFUNC_SEEK_END:
        return std::fseek(fileOf(stream), distance, SEEK_END);
    case ZLIB_FILEFUNC_SEEK_SET:
        return std::fseek(fileOf(stream), distance, SEEK_SET);
    default:
        return -1;
    }
}

int closeFile(voidpf, voidpf stream)
{
    return std::fclose(fileOf(stream));
}

int fileError(voidpf, voidpf stream)
{
    return std::ferror(fileOf(stream));
}

} // namespace

zlib_filefunc_def hostFileFunctions()
{
    zlib_filefunc_def functions = {};
    functions.zopen_file = openFile;
    functions.zread_file = readFile;
    functions.zwrite_file = writeFile;
    functions.ztell_file = tellFile;
    functions.zseek_file = seekFile;
    functions.zclose_file = closeFile;
    functions.zerror_file = fileError;
    return functions;
}
