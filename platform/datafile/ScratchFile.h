#pragma once

#include <string>
#include <string_view>

#include "datafile/FileDescriptor.h"

namespace datafile {

/// A file without a name: nobody else can open it by path, and it is gone with its last descriptor,
/// also when the process is killed. What must not lie on the disk in the clear passes through it.
class ScratchFile
{
public:
    /// Makes the folder if it is missing. Throws std::system_error.
    explicit ScratchFile(const std::string& folder);

    int descriptor() const { return _file.get(); }
    /// False, with errno set, if not all of the text could be written.
    bool write(std::string_view text) const { return _file.writeAll(text.data(), text.size()); }
    /// As FileDescriptor::readAt.
    ssize_t readAt(std::size_t offset, void* bytes, std::size_t count) const
    {
        return _file.readAt(offset, bytes, count);
    }
    /// A path by which this process can open the file.
    std::string path() const;
    /// Back to the first byte. Throws std::system_error.
    void rewind() const;

private:
    FileDescriptor _file;
};

} // namespace datafile
