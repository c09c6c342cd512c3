#pragma once

#include <cstdio>
#include <fstream>
#include <string>

#include "HostExport.h"

/// A file name in the host's spelling (with backslashes) and its other forms. Only this class and
/// the file services know the operating system's spelling, which has slashes instead of
/// backslashes.
class HOST_API ExtNameStr
{
public:
    ExtNameStr() = default;
    /// Takes the name as SetGeneric does.
    explicit ExtNameStr(const std::string& generic) { SetGeneric(generic); }

    /// Sets the name in the host's encoding. The UTF-8 form is derived from it.
    void SetGeneric(const std::string& name);
    /// Sets the name in UTF-8. The form in the host's encoding is derived from it.
    void SetU8(const std::string& name);
    /// The name in the host's encoding.
    const std::string& GetGeneric() const { return _generic; }
    /// The name in UTF-8.
    const std::string& GetU8() const { return _utf8; }
    /// The name in UTF-16.
    std::u16string GetU16() const;
    /// The operating system's spelling: UTF-8 with slashes.
    std::string GetNative() const;

    /// As the C function fopen; null on failure, with errno. A name that contains a NUL names no
    /// file. The caller closes the file.
    static std::FILE* fopen(const ExtNameStr& name, const char* mode);
    /// As the C function remove: deletes a file, a link or an empty directory. Returns -1 on
    /// failure, with errno.
    static int remove(const ExtNameStr& name);
    /// As the C function mkdir: creates one directory level. Returns -1 on failure, with errno.
    static int mkdir(const ExtNameStr& name);
    /// As the C function rmdir: deletes an empty directory. Returns -1 on failure, with errno.
    static int rmdir(const ExtNameStr& name);
    /// As the C function rename: replaces an existing file `to`. Returns -1 on failure, with errno.
    static int rename(const ExtNameStr& from, const ExtNameStr& to);
    /// Opens a stream for the file. On failure, or if the stream is already open, sets its failbit.
    static void Open(std::fstream& stream, const ExtNameStr& name, std::ios::openmode mode);
    /// Opens an input stream for the file. On failure, or if the stream is already open, sets its
    /// failbit.
    static void Open(std::ifstream& stream, const ExtNameStr& name, std::ios::openmode mode);
    /// Opens an output stream for the file. On failure, or if the stream is already open, sets its
    /// failbit.
    static void Open(std::ofstream& stream, const ExtNameStr& name, std::ios::openmode mode);

private:
    std::string _generic;
    std::string _utf8;
};
