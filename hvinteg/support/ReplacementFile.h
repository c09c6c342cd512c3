#pragma once

#include <cstdio>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "ExtNameStr.h"
#include "base/PartFile.h"

/// Writes a file under a temporary name and renames it when it is complete. Until then an existing
/// file of that name is unchanged. The new file takes over its permissions. The destructor removes
/// an unfinished file; the file of a killed process is removed by the next process that writes to
/// its folder.
class ReplacementFile
{
public:
    /// Creates the temporary file in the directory of `path`, which is in the host's spelling. Does
    /// not open if `path` is a directory, a device or a write-protected file. Replaces a link
    /// itself, not its target.
    explicit ReplacementFile(const std::string& path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool isOpen() const { return _buffer.file != nullptr; }
    std::ostream& stream() { return _stream; }
    /// Renames the file if every write succeeded. Returns false if a write or the renaming failed.
    bool finish();

private:
    /// Passes the stream's data to a C file, which collects small chunks: std::ofstream writes each
    /// of them separately.
    class FileBuffer : public std::streambuf
    {
    public:
        std::FILE* file = nullptr;

    private:
        std::streamsize xsputn(const char* bytes, std::streamsize size) override;
        int_type overflow(int_type character) override;
    };

    void open();
    bool close();

    ExtNameStr _target;
    base::PartFile _part;
    std::unique_ptr<char[]> _gathered;
    FileBuffer _buffer;
    std::ostream _stream{&_buffer};
};
