#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Reads a text piece by piece from its start. It takes no stack for it, however long the text is,
/// as a regular expression of the standard library does. Each call that fails takes nothing.
class TextScan
{
public:
    explicit TextScan(std::string_view text) : _rest(text) {}

    /// Takes these characters.
    bool skip(std::string_view expected);
    /// Takes all up to a mark, and the mark. Gives what is before the first one, or the last one.
    std::optional<std::string_view> until(std::string_view mark);
    std::optional<std::string_view> untilLast(std::string_view mark);
    /// Takes decimal digits, at least one. A number that is too large fails.
    std::optional<std::size_t> number();
    std::string_view rest() const { return _rest; }

private:
    std::optional<std::string_view> takeTo(std::size_t begin, std::size_t markSize);

    std::string_view _rest;
};
