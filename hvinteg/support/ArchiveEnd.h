#pragma once

#include <cstdint>
#include <string>

/// The end record of a zip archive, read without minizip, which does not find the one of an archive
/// that is nothing but its end record, and takes the bytes that a torn one lacks for zeros.
class ArchiveEnd
{
public:
    /// `path` is in the host's spelling.
    explicit ArchiveEnd(const std::string& path);

    /// Bytes; 0 for a file that cannot be read.
    std::uint64_t fileSize() const { return _fileSize; }
    /// The record is whole and counts no entries.
    bool isOfEmptyArchive() const { return _isOfEmptyArchive; }

private:
    std::uint64_t _fileSize = 0;
    bool _isOfEmptyArchive = false;
};
