#include "support/ZipWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>
#include <vector>

#include <minizip/zip.h>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "support/DirectorySpecific.h"
#include "support/Paths.h"
#include "support/Separators.h"
#include "support/ZipEntry.h"
#include "support/ZipFileFunctions.h"

namespace {

constexpr std::size_t kPacked = 8192;

// Empty if the path does not exist.
std::string resolved(const std::string& path)
{
    std::string result;
    ResolveFileSpecification(path, result);
    return result;
}

// Whether a listing contains all entries of the directory. It leaves out names that the host cannot
// spell, and is empty for an unreadable directory.
bool listsAll(const std::string& directory)
{
    std::ptrdiff_t listed = 0;
    DirectoryListing listing(directory, "*");
    for (std::string name; listing.Next(name);)
        listed += name == "." || name == ".." ? 0 : 1;
    std::ptrdiff_t found = 0;
    std::error_code error;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry(ExtNameStr(directory).GetNative(), error);
         !error && entry != end; entry.increment(error))
        ++found;
    return !error && found == listed;
}

} // namespace

/// The archive and the result code of the last minizip call. Other values than ZIP_OK end the use
/// of the archive.
struct HVINTEG_HIDDEN ZipWriter::Impl
{
    std::string path;
    bool open = false;
    zipFile handle = nullptr;
    std::int32_t lastResult = -1;
    /// The archive's path with links resolved, to recognise it under any name.
    std::string resolvedPath;

    Impl() = default;
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() { close(); }

    bool openArchive(const std::string& archive);
    bool close();
    /// Adds an entry with what `content` writes. After a failure the archive has an incomplete
    /// entry.
    template <typename Content>
    bool addEntry(const std::string& name, Content content);
    /// Appends to the open entry.
    bool write(const char* bytes, std::size_t size);
    bool addStream(const std::string& name, std::istream& stream);
    bool addFile(const std::string& name, const std::string& filePath);
    bool addDirectory(const std::string& name);
    bool addTree(const std::string& directory, const std::string& prefix,
                 std::vector<std::string>& ancestors);
    bool addFound(const std::string& found, bool isDirectory, const std::string& entryName,
                  std::vector<std::string>& ancestors);
    bool isArchive(const std::string& filePath) const
    {
        return !resolvedPath.empty() && resolved(filePath) == resolvedPath;
    }
};

bool ZipWriter::Impl::openArchive(const std::string& archive)
{
    // The text before a NUL is the name of another file.
    if (archive.find('\0') != std::string::npos)
        return false;
    zlib_filefunc_def functions = hostFileFunctions();
    handle = zipOpen2(archive.c_str(), APPEND_STATUS_CREATE, nullptr, &functions);
    if (handle == nullptr)
        return false;
    lastResult = ZIP_OK;
    path = archive;
    resolvedPath = resolved(archive);
    return true;
}

bool ZipWriter::Impl::close()
{
    if (handle == nullptr)
        return false;
    const int result = zipClose(handle, nullptr);
    handle = nullptr;
    if (lastResult == ZIP_OK)
        lastResult = result;
    return lastResult == ZIP_OK;
}

template <typename Content>
bool ZipWriter::Impl::addEntry(const std::string& name, Content content)
{
    // minizip would store only the text before the NUL.
    if (lastResult != ZIP_OK || name.find('\0') != std::string::npos)
        return false;
    const zip_fileinfo information = {};
    lastResult =
        zipOpenNewFileInZip(handle, FormalizeFilePath(name, false).c_str(), &information, nullptr,
                            0, nullptr, 0, nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION);
    if (lastResult != ZIP_OK)
        return false;
    const bool whole = content();
    const int result = zipCloseFileInZip(handle);
    if (lastResult == ZIP_OK)
        lastResult = result;
    return whole && lastResult == ZIP_OK;
}

bool ZipWriter::Impl::write(const char* bytes, std::size_t size)
{
    lastResult = zipWriteInFileInZip(handle, bytes, static_cast<unsigned>(size));
    return lastResult == ZIP_OK;
}

bool ZipWriter::Impl::addStream(const std::string& name, std::istream& stream)
{
    return addEntry(name, [&] {
        char chunk[kPacked];
        while (stream.read(chunk, kPacked) || stream.gcount() > 0)
            if (!write(chunk, static_cast<std::size_t>(stream.gcount())))
                return false;
        return !stream.bad();
    });
}

bool ZipWriter::Impl::addFile(const std::string& name, const std::string& filePath)
{
    // Test the kind first: a directory can be opened too, and opening a pipe would block.
    const ExtNameStr file(FormalizeFilePath(filePath, false));
    const FileKind kind = FileAttributesOf(file.GetU16());
    if (lastResult != ZIP_OK || kind == FileKind::Directory || kind == FileKind::Special ||
        isArchive(file.GetGeneric()))
        return false;
    std::ifstream stream;
    ExtNameStr::Open(stream, file, std::ios::in | std::ios::binary);
    return stream.is_open() && addStream(name, stream);
}

bool ZipWriter::Impl::addDirectory(const std::string& name)
{
    std::string entryName = name;
    if (entryName.empty() || (entryName.back() != '/' && !endsWithBackslash(entryName)))
        entryName += '/';
    return addEntry(entryName, [] { return true; });
}

// `ancestors` holds the resolved parents of this directory. A directory among them would make the
// recursion endless.
bool ZipWriter::Impl::addTree(const std::string& directory, const std::string& prefix,
                              std::vector<std::string>& ancestors)
{
    DirectorySpecific listing(directory);
    if (!listing.Exists())
        return true;
    const std::string place = resolved(listing.ExpandPath());
    if (std::find(ancestors.begin(), ancestors.end(), place) != ancestors.end())
        return false;
    ancestors.push_back(place);
    const std::string start = prefix.empty() ? prefix : prefix + '/';
    bool added = listsAll(listing.ExpandPath());
    std::string name;
    bool isDirectory = false;
    for (bool found = listing.BrowseFile(); found && added; found = listing.Next()) {
        listing.GetFileSpec(name, isDirectory);
        added = addFound(listing.ExpandPath() + name, isDirectory, start + name, ancestors);
    }
    ancestors.pop_back();
    return added;
}

bool ZipWriter::Impl::addFound(const std::string& found, bool isDirectory,
                               const std::string& entryName, std::vector<std::string>& ancestors)
{
    // An entry that cannot be unpacked again would make the copy incomplete.
    if (!isTrustedEntryName(FormalizeFilePath(entryName, isDirectory)))
        return false;
    if (!isDirectory)
        // Skip the archive itself if it is inside the directory.
        return isArchive(found) || addFile(entryName, found);
    addDirectory(entryName);
    return addTree(found, entryName, ancestors);
}

ZipWriter::ZipWriter() : _impl(std::make_unique<Impl>()) {}

ZipWriter::ZipWriter(const std::string& path) : ZipWriter()
{
    Open(path);
}

ZipWriter::~ZipWriter() = default;

bool ZipWriter::Open(const std::string& path)
{
    if (!_impl->open)
        _impl->open = _impl->openArchive(path);
    return _impl->open;
}

bool ZipWriter::IsOpen() const
{
    return _impl->open;
}

bool ZipWriter::AddDirectoryName(const std::string& name)
{
    return _impl->addDirectory(name);
}

bool ZipWriter::AddFile(const std::string& entryName, const std::string& filePath)
{
    return _impl->addFile(entryName, filePath);
}

bool ZipWriter::AddFullDirectory(const std::string& directory)
{
    std::vector<std::string> ancestors;
    return _impl->lastResult == ZIP_OK && _impl->addTree(directory, {}, ancestors);
}

bool ZipWriter::AddStream(const std::string& entryName, std::istream& stream)
{
    return _impl->addStream(entryName, stream);
}

bool ZipWriter::AddString(const std::string& entryName, const std::string& content)
{
    // minizip counts the bytes of a write in 32 bits.
    if (content.size() > std::numeric_limits<unsigned>::max())
        return false;
    return _impl->addEntry(entryName, [&] { return _impl->write(content.data(), content.size()); });
}

bool ZipDir(const std::string& archive, const std::string& directory)
{
    ZipWriter writer(archive);
    return writer.IsOpen() && writer.AddFullDirectory(directory) && writer._impl->close();
}
