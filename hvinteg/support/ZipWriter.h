#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// Writes a zip archive with deflate compression. Paths and names of entries are in the host's
/// encoding. The archive stores names with backslashes, whatever separators the caller uses.
///
/// Operations return false on failure; they report no reason. After the archive itself has failed,
/// every later operation returns false without writing to it. The destructor completes the archive.
/// An entry holds less than 4 GiB. One thread at a time.
class HVINTEG_EXPORT ZipWriter
{
public:
    /// Creates an object without an archive.
    ZipWriter();
    /// Creates an archive; IsOpen returns whether that succeeded.
    explicit ZipWriter(const std::string& path);
    /// Completes and closes the archive.
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// Creates an archive, and replaces any file of that name, if the object has none open. Returns
    /// whether one is open afterwards.
    bool Open(const std::string& path);
    /// Whether an archive is open.
    bool IsOpen() const;

    /// Adds an empty directory entry. `name` need not end in a separator.
    bool AddDirectoryName(const std::string& name);
    /// Adds a file from disk. Adds nothing and returns false for a file that does not open, a
    /// directory, a device and the archive itself. Also returns false if the file cannot be read to
    /// its end; the archive then contains an incomplete entry.
    bool AddFile(const std::string& entryName, const std::string& filePath);
    /// Adds the content of a directory and its subdirectories, sorted by name, each directory
    /// before its content. Follows links. Skips the archive itself. Adds nothing and returns true
    /// if the directory does not exist. The first failure ends the walk. Failures also include a
    /// link that leads back to a parent, a directory that cannot be listed completely, and a name
    /// that ZipReader would not unpack.
    bool AddFullDirectory(const std::string& directory);
    /// Adds the rest of the stream. Returns false if the stream fails; the archive then contains an
    /// incomplete entry.
    bool AddStream(const std::string& entryName, std::istream& stream);
    /// Adds a text or other bytes, NULs included.
    bool AddString(const std::string& entryName, const std::string& content);

private:
    friend HVINTEG_EXPORT bool ZipDir(const std::string& archive, const std::string& directory);

    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Packs a directory with AddFullDirectory. Returns false if the archive cannot be created or
/// completed, or if AddFullDirectory fails.
HVINTEG_EXPORT bool ZipDir(const std::string& archive, const std::string& directory);
