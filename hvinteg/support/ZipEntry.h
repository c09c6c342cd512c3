#pragma once

#include <cstdint>
#include <string>

#include <minizip/unzip.h>

/// Whether an entry of this name, in the host's spelling, can be unpacked into a folder: the name
/// stays below the folder on any system, and is not too long. A trailing separator makes it a
/// directory's.
bool isTrustedEntryName(const std::string& name);

/// What an archive's directory says of one of its entries, and how far it is to be believed. An
/// archive may come from anywhere, and minizip takes whatever stands in it.
class ZipEntry
{
public:
    /// Reads what is known of the current entry; the result is minizip's.
    int read(unzFile archive);

    /// In the host's spelling; one of 260 bytes or more is cut to 259.
    const std::string& name() const { return _name; }
    bool isDirectory() const { return _isDirectory; }
    /// Bytes, as declared.
    std::uint64_t size() const { return _size; }

    /// A file or folder whose content can be unpacked: no link, device or volume label, not
    /// encrypted, stored or deflated.
    bool isReadable() const;
    /// The name is whole and stays below the folder that it is joined to, on any system.
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
