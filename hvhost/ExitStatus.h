#pragma once

/// What the shell gets from hvhost.
enum class ExitStatus : int
{
    Done = 0,
    JobFailed = 1,
    Usage = 2,
    Input = 3,     ///< an input cannot be read or is invalid
    Engine = 4,    ///< the engine or the Java virtual machine cannot start
    Warnings = 5,  ///< done, but with warnings, under --strict
    Timeout = 124, ///< --timeout ran out
    Interrupted = 130,
    NoReader = 141 ///< nobody reads standard output any more, as of a program that SIGPIPE ends
};
