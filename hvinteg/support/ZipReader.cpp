#include "support/ZipReader.h"

#include <algorithm>
#include <cstdint>
#include <ostream>

#include <minizip/unzip.h>

#include "MultiByte.h"
#include "support/ArchiveEnd.h"
#include "support/DirectorySpecific.h"
#include "support/ExtractionFolder.h"
#include "support/Files.h"
#include "support/Paths.h"
#include "support/ReplacementFile.h"
#include "support/ZipEntry.h"
#include "support/ZipFileFunctions.h"

namespace {

constexpr std::size_t kChunk = 8192;

// Limits against archives that are made to fill a disk. Output of jobs compresses to between a
// tenth and a thirtieth. Malicious archives reach a thousandth, and less if entries share data.
constexpr std::uint64_t kAllowedAnyway = std::uint64_t{1} << 30;
constexpr std::uint64_t kAllowedRatio = 200;
constexpr std::uint64_t kMostEntries = 1'000'000;

// Without the zip64 end record the count of entries is limited to this value, which minizip reads
// as "more".
constexpr std::uint64_t kCountUnknown = 0xffff;

} // namespace

/// The archive and the result code of the last minizip call. Other values than UNZ_OK end the use
/// of the archive.
struct HVINTEG_HIDDEN ZipReader::Impl
{
    std::string path;
    bool open = false;
    std::uint32_t entryCount = 0;
    unzFile handle = nullptr;
    std::int32_t lastResult = -1;
    /// Remaining bytes that may be written.
    std::uint64_t allowance = 0;

    Impl() = default;
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() { close(); }

    void close();

    bool openArchive(const std::string& archive);
    bool locate(const std::string& name);
    bool goTo(int (*move)(unzFile), ZipEntry& entry);
    bool lookAt(ZipEntry& entry);
    template <typename Sink>
    bool exportEntry(const ZipEntry& entry, Sink sink);
    template <typename Sink>
    std::uint64_t readEntry(Sink sink);
    bool exportTo(const ZipEntry& entry, std::ostream& stream);
    bool exportTo(const ZipEntry& entry, const std::string& filePath);
    bool exportInto(ExtractionFolder& folder, const ZipEntry& entry);
    bool exportAllInto(ExtractionFolder& folder);
    bool isWalkOver(std::uint64_t entries) const;
};

bool ZipReader::Impl::openArchive(const std::string& archive)
{
    // The text before a NUL is the name of another file.
    if (archive.find('\0') != std::string::npos)
        return false;
    zlib_filefunc_def functions = hostFileFunctions();
    handle = unzOpen2(archive.c_str(), &functions);
    unz_global_info info = {};
    unzGetGlobalInfo(handle, &info);
    const ArchiveEnd end(archive);
    // minizip may report no entries for an archive that has some, and fails to open an empty
    // archive. Without a handle every later call of minizip fails.
    if (info.number_entry == 0 && !end.isOfEmptyArchive()) {
        close();
        return false;
    }
    lastResult = UNZ_OK;
    entryCount = static_cast<std::uint32_t>(std::min<std::uint64_t>(info.number_entry, UINT32_MAX));
    allowance = std::max(kAllowedAnyway, kAllowedRatio * end.fileSize());
    path = archive;
    return true;
}

void ZipReader::Impl::close()
{
    if (handle != nullptr)
        unzClose(handle);
    handle = nullptr;
}

bool ZipReader::Impl::locate(const std::string& name)
{
    // Other programs write slashes where this library writes backslashes.
    std::string host = FormalizeFilePath(name, false);
    lastResult = unzLocateFile(handle, host.c_str(), 0);
    if (lastResult == UNZ_END_OF_LIST_OF_FILE && VEXAMBstrchr_A(host.c_str(), '\\') != nullptr) {
        VEXAMBStringReplaceChar_A(host, '\\', '/');
        lastResult = unzLocateFile(handle, host.c_str(), 0);
    }
    return lastResult == UNZ_OK;
}

bool ZipReader::Impl::goTo(int (*move)(unzFile), ZipEntry& entry)
{
    if (lastResult != UNZ_OK)
        return false;
    lastResult = move(handle);
    return lookAt(entry);
}

bool ZipReader::Impl::lookAt(ZipEntry& entry)
{
    if (lastResult == UNZ_OK)
        lastResult = entry.read(handle);
    return lastResult == UNZ_OK;
}

// minizip never reads beyond the declared size, so that size limits the output. It must not be used
// to allocate memory: the data may be shorter.
template <typename Sink>
bool ZipReader::Impl::exportEntry(const ZipEntry& entry, Sink sink)
{
    if (!entry.isReadable() || entry.size() > allowance)
        return false;
    lastResult = unzOpenCurrentFile(handle);
    if (lastResult != UNZ_OK)
        return false;
    const std::uint64_t size = readEntry(sink);
    // Counted over the life of the reader, so that many entries have the same limit as few.
    allowance -= size;
    lastResult = unzCloseCurrentFile(handle);
    return lastResult == UNZ_OK && size == entry.size();
}

// A failed read looks like the end of the content. The caller notices by the missing bytes.
template <typename Sink>
std::uint64_t ZipReader::Impl::readEntry(Sink sink)
{
    char chunk[kChunk];
    std::uint64_t size = 0;
    for (int count; (count = unzReadCurrentFile(handle, chunk, kChunk)) > 0;) {
        size += static_cast<std::uint64_t>(count);
        if (!sink(chunk, count))
            break;
    }
    return size;
}

bool ZipReader::Impl::exportTo(const ZipEntry& entry, std::ostream& stream)
{
    const auto write = [&stream](const char* chunk, int count) {
        return static_cast<bool>(stream.write(chunk, count));
    };
    return exportEntry(entry, write) && stream.good();
}

bool ZipReader::Impl::exportTo(const ZipEntry& entry, const std::string& filePath)
{
    if (!entry.hasTrustedName())
        return false;
    ReplacementFile file(FormalizeFilePath(filePath, false));
    return file.isOpen() && exportTo(entry, file.stream()) && file.finish();
}

bool ZipReader::Impl::exportInto(ExtractionFolder& folder, const ZipEntry& entry)
{
    if (!entry.isReadable() || !entry.hasTrustedName() || !folder.admit(entry.name()))
        return false;
    const std::string place = folder.pathOf(entry.name());
    return entry.isDirectory() ? MakeDir(place) : exportTo(entry, place);
}

bool ZipReader::Impl::exportAllInto(ExtractionFolder& folder)
{
    ZipEntry entry;
    if (!goTo(unzGoToFirstFile, entry))
        return entryCount == 0;
    std::uint64_t entries = 0;
    do {
        if (++entries > kMostEntries || !exportInto(folder, entry))
            return false;
    } while (goTo(unzGoToNextFile, entry));
    return isWalkOver(entries);
}

// A truncated list of entries does not count as its end.
bool ZipReader::Impl::isWalkOver(std::uint64_t entries) const
{
    return lastResult == UNZ_END_OF_LIST_OF_FILE ||
           (entryCount == kCountUnknown && entries == entryCount);
}

ZipReader::ZipReader() : _impl(std::make_unique<Impl>()) {}

ZipReader::ZipReader(const std::string& path) : ZipReader()
{
    Open(path);
}

ZipReader::~ZipReader() = default;

bool ZipReader::Open(const std::string& path)
{
    if (!_impl->open)
        _impl->open = _impl->openArchive(path);
    return _impl->open;
}

bool ZipReader::IsOpen() const
{
    return _impl->open;
}

bool ZipReader::GetFirst(std::string& name, bool& isDirectory)
{
    ZipEntry entry;
    if (!_impl->goTo(unzGoToFirstFile, entry))
        return false;
    name = entry.name();
    isDirectory = entry.isDirectory();
    return true;
}

bool ZipReader::GetNext(std::string& name, bool& isDirectory)
{
    ZipEntry entry;
    if (!_impl->goTo(unzGoToNextFile, entry))
        return false;
    name = entry.name();
    isDirectory = entry.isDirectory();
    return true;
}

bool ZipReader::GotoFile(const std::string& name)
{
    return _impl->lastResult == UNZ_OK && _impl->locate(name);
}

bool ZipReader::ExportFile(const std::string& filePath)
{
    ZipEntry entry;
    return _impl->lookAt(entry) && _impl->exportTo(entry, filePath);
}

bool ZipReader::ExportStream(std::ostream& stream)
{
    ZipEntry entry;
    return _impl->lookAt(entry) && _impl->exportTo(entry, stream);
}

bool ZipReader::ExportString(std::string& content)
{
    content.clear();
    ZipEntry entry;
    const auto append = [&content](const char* chunk, int count) {
        content.append(chunk, static_cast<std::size_t>(count));
        return true;
    };
    if (_impl->lookAt(entry) && _impl->exportEntry(entry, append))
        return true;
    content.clear();
    return false;
}

bool ZipReader::ExportFullDirectory(const std::string& directory)
{
    const DirectorySpecific target(directory);
    // An existing directory is accepted unless it is read-only.
    if (target.Exists() ? target.ReadOnly() : !MakeDir(target.ExpandPath()))
        return false;
    if (_impl->lastResult != UNZ_OK)
        return true;
    if (_impl->entryCount > kMostEntries)
        return false;
    ExtractionFolder folder(target.ExpandPath());
    return _impl->exportAllInto(folder);
}

bool UnzipToDir(const std::string& archive, const std::string& directory)
{
    ZipReader reader(archive);
    return reader.IsOpen() && reader.ExportFullDirectory(directory);
}
