#pragma once

#include <csignal>

#include <sys/resource.h>

/// During its lifetime no file can grow beyond a limit, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &_before);
        const rlimit limit = {bytes, _before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &_before);
        std::signal(SIGXFSZ, _handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit _before = {};
    void (*_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
