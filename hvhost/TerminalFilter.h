#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// Cleans data on its way to a terminal, chunk by chunk: of what would command the terminal only
/// line ends, tabs and this program's own styles of text are left.
class TerminalFilter
{
public:
    /// What of the bytes can be shown by now; the beginning of a character waits for the rest.
    std::string clean(std::string_view bytes);
    /// What still waits.
    std::string finish();

private:
    std::string _waiting;
};

/// Has a stream clean what it is given, for its scope.
class CleanedStream : public std::streambuf
{
public:
    explicit CleanedStream(std::ostream& stream);
    ~CleanedStream() override;
    CleanedStream(const CleanedStream&) = delete;
    CleanedStream& operator=(const CleanedStream&) = delete;

private:
    int_type overflow(int_type character) override;
    int sync() override;
    bool pass();

    std::ostream& _stream;
    std::streambuf* _target;
    TerminalFilter _filter;
    std::array<char, 4096> _chunk{};
};
