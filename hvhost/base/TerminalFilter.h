#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// Removes control sequences from data for a terminal, chunk by chunk. Only line ends, tabs and
/// this program's own text styles remain.
class TerminalFilter
{
public:
    /// Returns the bytes that can be shown now. Keeps an incomplete character until the rest comes.
    std::string clean(std::string_view bytes);
    /// Returns the kept bytes.
    std::string finish();

private:
    std::string _waiting;
};

/// Makes a stream clean its data during the lifetime of the object.
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
