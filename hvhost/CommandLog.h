#pragma once

#include <string>

/// Appends a line to the log of a command, with the time; to none if the name is empty. A log that
/// cannot be written is no reason to stop: the command has found out at its start whether it can.
void appendToLog(const std::string& file, const std::string& line);

/// Throws CommandFault (Usage) for a log that cannot be written, and for a file that is not a log.
void checkLog(const std::string& file);
