#include "sweep/StandardFiles.h"

#include <cstdio>
#include <iostream>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

void flushAll()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(stdout);
    std::fflush(stderr);
}

/// Puts the file in the place of the descriptor; gives what was there.
int replace(int descriptor, const std::filesystem::path& path)
{
    const int before = fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (before < 0 || file < 0 || dup2(file, descriptor) < 0)
        throw std::system_error(errno, std::generic_category(), path.string());
    close(file);
    return before;
}

void putBack(int descriptor, int before)
{
    dup2(before, descriptor);
    close(before);
}

} // namespace

StandardFiles::StandardFiles(const std::filesystem::path& output,
                             const std::filesystem::path& errors)
    : _output(replace(STDOUT_FILENO, output)), _errors(replace(STDERR_FILENO, errors))
{
}

StandardFiles::~StandardFiles()
{
    flushAll();
    std::cout.clear();
    std::clearerr(stdout);
    putBack(STDOUT_FILENO, _output);
    putBack(STDERR_FILENO, _errors);
}
