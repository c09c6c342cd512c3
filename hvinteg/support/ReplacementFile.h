#pragma once

#include <fstream>
#include <string>

#include "ExtNameStr.h"

/// A file that appears under its name only when it is whole. Until then it is written beside it,
/// and a file that has the name stays as it is. One that is not finished leaves nothing behind.
class ReplacementFile
{
public:
    /// `path` is in the host's spelling. A directory, a device or a file that is not to be written
    /// is not replaced; a link is, and what it leads to stays.
    explicit ReplacementFile(const std::string& path);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    bool isOpen() const { return _stream.is_open(); }
    std::ostream& stream() { return _stream; }
    /// Gives the file its name. False if not all of it could be written.
    bool finish();

private:
    bool reserveName(const std::string& directory);

    ExtNameStr _target;
    ExtNameStr _unfinished;
    bool _exists = false;
    std::ofstream _stream;
};
