#pragma once

#include <cstdint>
#include <string>

/// Reads the end record of a zip archive without minizip. minizip does not find the end record of
/// an archive that consists of that record alone. It also reads the missing bytes of a truncated
/// one as zeros.
class ArchiveEnd
{
public:
    /// `path` is in the host's spelling.
    explicit ArchiveEnd(const std::string& path);

    /// Size in bytes; 0 if the file cannot be read.
    std::uint64_t fileSize() const { return _fileSize; }
    /// True if the end record is complete and counts no entries.
    bool isOfEmptyArchive() const { return _isOfEmptyArchive; }

private:
    std::uint64_t _fileSize = 0;
    bool _isOfEmptyArchive = false;
};
