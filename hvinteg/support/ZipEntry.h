#pragma once

#include <cstdint>
#include <string>

#include <minizip/unzip.h>

/// Returns true if an entry of this name can be unpacked into a folder: the name, joined to the
/// folder on any system, stays inside it and is not too long. `name` is in the host's spelling; a
/// trailing separator marks a directory.
bool isTrustedEntryName(const std::string& name);

/// The directory record of an archive's entry, with the checks that decide whether it is trusted.
/// An archive may come from anywhere, and minizip accepts invalid records.
class ZipEntry
{
public:
    /// Reads the record of the current entry. Returns minizip's result code.
    int read(unzFile archive);

    /// In the host's spelling. A name of 260 bytes or more is cut to 259.
    const std::string& name() const { return _name; }
    bool isDirectory() const { return _isDirectory; }
    /// Declared size of the content in bytes.
    std::uint64_t size() const { return _size; }

    /// True if the content can be unpacked: a file or folder, not a link, device or volume label,
    /// not encrypted, and stored or deflated.
    bool isReadable() const;
    /// True if the name is complete and, joined to a folder on any system, stays inside it.
    bool hasTrustedName() const;

private:
    bool contradictsItsName() const;

    std::string _name;
    bool _isDirectory = false;
    bool _isNameWhole = false;
    std::uint64_t _size = 0;
    std::uint64_t _flags = 0;
    std::uint64_t _method = 0;
    std::uint64_t _attributes = 0;
};
