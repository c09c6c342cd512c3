#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// Writes a zip archive, deflated. Paths and the names of entries are in the host's encoding; a
/// name stands in the archive with backslashes, whichever separators it is given with.
///
/// Nothing throws or says why it failed. Once the archive itself has failed, every later operation
/// gives false without touching it. The archive is complete when the object is gone. One entry
/// holds less than 4 GiB. One thread at a time.
class HVINTEG_EXPORT ZipWriter
{
public:
    /// Without an archive, or with one that Open creates.
    ZipWriter();
    explicit ZipWriter(const std::string& path);
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// Creates an archive, in place of any file of that name, unless one is open already; true if
    /// one is open then.
    bool Open(const std::string& path);
    bool IsOpen() const;

    /// Adds an empty directory entry; the name need not end in a separator.
    bool AddDirectoryName(const std::string& name);
    /// Adds a file from disk. One that does not open adds nothing, and so do a directory, a device
    /// and the archive itself. False as well if it could not be read to its end.
    bool AddFile(const std::string& entryName, const std::string& filePath);
    /// Adds what is in a directory and below, in the order of the names, each directory before what
    /// is in it; links are followed. The first failure ends it. A missing directory has nothing to
    /// add. The archive itself is passed over. Failures are a link that leads back up, a directory
    /// that cannot be listed in full, and a name that ZipReader would not unpack.
    bool AddFullDirectory(const std::string& directory);
    /// Adds all that the stream still has; false as well if it broke off.
    bool AddStream(const std::string& entryName, std::istream& stream);
    bool AddString(const std::string& entryName, const std::string& content);

private:
    friend HVINTEG_EXPORT bool ZipDir(const std::string& archive, const std::string& directory);

    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Packs a directory as AddFullDirectory does; false for an archive that cannot be created, or
/// whose end could not be written.
HVINTEG_EXPORT bool ZipDir(const std::string& archive, const std::string& directory);
