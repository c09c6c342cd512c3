#pragma once

#include <string>
#include <string_view>

#include "base/FileDescriptor.h"

namespace datafile {

/// A file without a name: nobody else can open it by path. It disappears with its last descriptor,
/// even if the process is killed. Used for data that must not be readable on disk.
class ScratchFile
{
public:
    /// Creates the folder if it is missing. Throws std::system_error.
    explicit ScratchFile(const std::string& folder);

    int descriptor() const { return _file.get(); }
    /// Returns false, with errno, if not all of the text could be written.
    bool write(std::string_view text) const { return _file.writeAll(text.data(), text.size()); }
    /// As FileDescriptor::readAt.
    ssize_t readAt(std::size_t offset, void* bytes, std::size_t count) const
    {
        return _file.readAt(offset, bytes, count);
    }
    /// A path that only this process can open.
    std::string path() const;
    /// Moves to the first byte. Throws std::system_error.
    void rewind() const;

private:
    base::FileDescriptor _file;
};

} // namespace datafile
