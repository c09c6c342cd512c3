#pragma once

#include <string>

/// Whether to wait for a reader if the log is a pipe without one.
enum class LogWait
{
    ForReader,
    Never
};

/// Appends a line with the time to the log of a command. An empty name means no log. Ignores
/// errors: checkLog has already checked that the log is writable.
void appendToLog(const std::string& file, const std::string& line,
                 LogWait wait = LogWait::ForReader);

/// Throws CommandFault (Usage) if the log is not writable or the file is not a log.
void checkLog(const std::string& file);
