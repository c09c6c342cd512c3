#pragma once

/// The exit statuses of hvhost.
enum class ExitStatus : int
{
    Done = 0,
    JobFailed = 1,
    Usage = 2,
    Input = 3,     ///< an input is unreadable or invalid
    Engine = 4,    ///< the engine or the Java virtual machine cannot start
    Warnings = 5,  ///< done, but with warnings, under --strict
    Timeout = 124, ///< --timeout ran out
    Interrupted = 130,
    NoReader =
        141 ///< the reader of standard output is gone; the status of a program that SIGPIPE ends
};
