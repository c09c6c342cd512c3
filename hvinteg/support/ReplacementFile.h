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
    /// `path` is in the host's spelling. A directory, a device or a file that is not to be written
    /// is not replaced; a link is, and what it leads to stays.
    explicit ReplacementFile(const std::string& path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool isOpen() const { return _buffer.file != nullptr; }
    std::ostream& stream() { return _stream; }
    /// Gives the file its name, if the stream took everything; false if the disk did not.
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
