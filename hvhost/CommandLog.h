#pragma once

#include <string>

/// Whether a log that is a pipe without a reader is waited for.
enum class LogWait
{
    ForReader,
    Never
};

/// Appends a line to the log of a command, with the time. An empty name means that there is no log.
/// A log that cannot be written is no reason to stop: the command has found out at its start
/// whether it can.
void appendToLog(const std::string& file, const std::string& line,
                 LogWait wait = LogWait::ForReader);

/// Throws CommandFault (Usage) for a log that cannot be written, and for a file that is not a log.
void checkLog(const std::string& file);
