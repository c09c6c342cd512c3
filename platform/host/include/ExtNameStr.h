#pragma once

#include <cstdio>
#include <fstream>
#include <string>

#include "HostExport.h"

/// A file name in the host's spelling, with backslashes, in every form that is asked for. This
/// class and the file services alone know how the operating system spells paths: there a backslash
/// becomes a slash.
class HOST_API ExtNameStr
{
public:
    ExtNameStr() = default;
    explicit ExtNameStr(const std::string& generic) { SetGeneric(generic); }

    /// Takes the name in the host's encoding, or in UTF-8; the other form follows from it.
    void SetGeneric(const std::string& name);
    void SetU8(const std::string& name);
    const std::string& GetGeneric() const { return _generic; }
    const std::string& GetU8() const { return _utf8; }
    std::u16string GetU16() const;
    /// As the operating system spells it: UTF-8 with slashes.
    std::string GetNative() const;

    /// As the C functions of the same names, on the name given; null or -1 on failure, with errno.
    /// A name with a NUL in it names no file.
    static std::FILE* fopen(const ExtNameStr& name, const char* mode);
    static int remove(const ExtNameStr& name);
    static int mkdir(const ExtNameStr& name);
    static int rmdir(const ExtNameStr& name);
    /// Takes the place of whatever file `to` is.
    static int rename(const ExtNameStr& from, const ExtNameStr& to);
    /// Opens a stream on the name; a stream that was open, or a failure, sets its failbit.
    static void Open(std::fstream& stream, const ExtNameStr& name, std::ios::openmode mode);
    static void Open(std::ifstream& stream, const ExtNameStr& name, std::ios::openmode mode);
    static void Open(std::ofstream& stream, const ExtNameStr& name, std::ios::openmode mode);

private:
    std::string _generic;
    std::string _utf8;
};
