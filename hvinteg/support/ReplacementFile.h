#pragma once

#include <cstdio>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "ExtNameStr.h"
#include "datafile/PartFile.h"

/// A file that gets its name only when it is complete. Until then it is written beside that name,
/// and a file that has the name already is unchanged. The new file takes over its permissions. An
/// unfinished file is removed; one that a killed process left is removed by the next process that
/// writes into its folder.
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
    /// Hands what a stream gets to a C file, which gathers small chunks: a std::ofstream writes
    /// each of them on its own.
    class FileBuffer : public std::streambuf
    {
    public:
        std::FILE* file = nullptr;

    private:
        std::streamsize xsputn(const char* bytes, std::streamsize size) override;
        int_type overflow(int_type character) override;
    };

    void open();
    void keepPermissions();
    bool close();

    ExtNameStr _target;
    datafile::PartFile _part;
    std::unique_ptr<char[]> _gathered;
    FileBuffer _buffer;
    std::ostream _stream{&_buffer};
};
