#pragma once

#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

/// Whether a check holds in a child process, which begins as a copy of this one and ends by exit.
template <typename Check>
bool holdsInChild(Check check)
{
    const pid_t child = ::fork();
    if (child == 0)
        std::exit(check() ? 0 : 1);
    int status = -1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}
