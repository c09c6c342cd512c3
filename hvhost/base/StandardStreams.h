#pragma once

#include <array>
#include <climits>
#include <ostream>
#include <streambuf>
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
/// Throws CommandFault if printed text did not reach standard output: a stop of the command,
/// NoReader or JobFailed.
void flushStandardOutput();
/// Prints a text on standard error, from any thread. If the command is stopped and nobody reads
/// standard error, waits half a second, then drops this text and all later ones.
void printToStandardError(const std::string& text);

/// During the lifetime of the object, std::cout waits for its reader only until the command is
/// stopped. The stream then fails, and flushStandardOutput throws. One object in a process.
class StoppableOutput : public std::streambuf
{
public:
    StoppableOutput();
    ~StoppableOutput() override;
    StoppableOutput(const StoppableOutput&) = delete;
    StoppableOutput& operator=(const StoppableOutput&) = delete;

private:
    int_type overflow(int_type character) override;
    int sync() override;
    bool pass();

    std::streambuf* _original;
    std::array<char, PIPE_BUF> _chunk{};
};
