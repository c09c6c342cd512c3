#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Reads a text piece by piece from its start. Unlike std::regex, it needs no stack, however long
/// the text is. A call that fails consumes nothing.
class TextScan
{
public:
    explicit TextScan(std::string_view text) : _rest(text) {}

    /// Consumes these characters.
    bool skip(std::string_view expected);
    /// Consumes everything up to the first mark, and the mark. Returns the text before the mark.
    std::optional<std::string_view> until(std::string_view mark);
    /// Consumes everything up to the last mark, and the mark. Returns the text before the mark.
    std::optional<std::string_view> untilLast(std::string_view mark);
    /// Consumes one or more decimal digits. A number that is too large fails.
    std::optional<std::size_t> number();
    std::string_view rest() const { return _rest; }

private:
    std::optional<std::string_view> takeTo(std::size_t begin, std::size_t markSize);

    std::string_view _rest;
};
