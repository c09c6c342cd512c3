#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "JobError.h"
#include "language/Ast.h"

namespace EmbeddedHV::language {

/// Reads a text character by character and counts lines and columns. Checks that the bytes are
/// UTF-8, so every part of the text that it returns is valid UTF-8. Borrows the text.
class TextCursor
{
public:
    explicit TextCursor(std::string_view text) : _rest(text) {}

    bool atEnd() const { return _rest.empty(); }
    /// The byte `offset` bytes ahead, or 0 past the end.
    char peek(std::size_t offset = 0) const { return offset < _rest.size() ? _rest[offset] : '\0'; }
    bool startsWith(std::string_view prefix) const { return _rest.starts_with(prefix); }
    std::string_view rest() const { return _rest; }
    const Position& position() const { return _position; }

    /// Consumes one character and returns its bytes. Throws JobError if they are not UTF-8.
    std::string_view advance();
    void advance(std::size_t characters);

private:
    std::string_view _rest;
    Position _position{1, 1};
};

/// The position in the parts of an error.
TextPlace textPlace(const Position& position);

/// Throws JobError with a text that begins with "line L, column C: ". `parts` has what the caller
/// knows beyond the position and the text.
[[noreturn]] void failAt(const Position& position, const std::string& text, const char* id,
                         FaultParts parts = {});

} // namespace EmbeddedHV::language
