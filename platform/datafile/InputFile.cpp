#include "datafile/InputFile.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "datafile/Fault.h"
#include "datafile/FaultIds.h"

namespace datafile {
namespace {

std::string systemMessage(int code)
{
    return std::generic_category().message(code);
}

[[noreturn]] void refuse(const char* id, const std::string& step, const std::string& path,
                         const std::string& reason)
{
    throw Fault(id, {.step = step, .file = path, .what = reason});
}

} // namespace

void checkInputFile(const std::string& path, const std::string& step)
{
    struct stat state = {};
    if (stat(path.c_str(), &state) != 0) {
        const int code = errno;
        refuse(code == ENOENT || code == ENOTDIR ? faults::kFileMissing : faults::kFileUnreadable,
               step, path,
               code == ENOENT || code == ENOTDIR
                   ? "there is no such file"
                   : "the file cannot be read: " + systemMessage(code));
    }
    if (S_ISDIR(state.st_mode))
        refuse(faults::kFileIsFolder, step, path, "this is a folder, not a file");
    if (!S_ISREG(state.st_mode))
        refuse(faults::kFileUnreadable, step, path, "this is not a regular file");
    if (state.st_size == 0)
        refuse(faults::kFileEmpty, step, path, "the file is empty");
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        refuse(faults::kFileUnreadable, step, path,
               "the file cannot be read: " + systemMessage(errno));
    close(descriptor);
}

std::string readSmallFile(const std::string& path, const std::string& step)
{
    checkInputFile(path, step);
    std::ifstream file(path, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (file.bad())
        refuse(faults::kFileUnreadable, step, path, "the file cannot be read");
    return content;
}

std::string literalPath(const std::string& path)
{
    // In a pattern, a class of one character matches that character.
    std::string literal;
    for (const char character : path) {
        if (character == '*' || character == '?' || character == '[')
            literal += std::string("[") + character + "]";
        else if (character == '\\')
            literal += "\\\\";
        else
            literal += character;
    }
    return literal;
}

} // namespace datafile
