#pragma once

#include <string>

class InterruptWatch;

/// The path that stands for standard input or standard output.
inline constexpr const char* kStandardStream = "-";

/// Data that a command takes from a stream or gives to one stands in a file while the engine works
/// on it. Both ways wait for the other side of the stream no longer than until the user interrupts
/// the command. They throw CommandFault.

/// Has a write that nobody reads fail, in place of the whole program.
void ignoreLostReaders();
/// Keeps files that the process opens from getting the number of a standard stream that it was
/// started without, and with it whatever is read or written there.
void occupyStandardStreams();
/// Fetches all of standard input, or of a pipe by its name, into a file.
void fetchStream(const std::string& source, const std::string& path, const InterruptWatch& watch);
/// Copies a file to standard output.
void deliverToStandardOutput(const std::string& path, const InterruptWatch& watch);
/// Prints a text, behind all that was printed before.
void printToStandardOutput(const std::string& text, const InterruptWatch& watch);
/// Throws CommandFault (JobFailed, or NoReader) if something printed did not get to standard
/// output.
void flushStandardOutput();
