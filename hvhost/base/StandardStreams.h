#pragma once

#include <string>

class InterruptWatch;

/// The path for standard input or standard output.
inline constexpr const char* kStandardStream = "-";

/// Data from or for a stream is in a file while the engine works on it. Both directions wait for
/// the other side of the stream, but stop when the user interrupts the command. The functions throw
/// CommandFault.

/// Makes a write without a reader fail instead of ending the program.
void ignoreLostReaders();
/// Opens missing standard streams. Otherwise a file that the process opens could get the number of
/// a standard stream, and standard input or output would go to it.
void occupyStandardStreams();
/// Copies standard input or a named pipe to a file.
void fetchStream(const std::string& source, const std::string& path, const InterruptWatch& watch);
/// Copies a file to standard output.
void deliverToStandardOutput(const std::string& path, const InterruptWatch& watch);
/// Prints a text after everything that was printed before.
void printToStandardOutput(const std::string& text, const InterruptWatch& watch);
/// Throws CommandFault (JobFailed or NoReader) if printed text did not reach standard output.
void flushStandardOutput();
