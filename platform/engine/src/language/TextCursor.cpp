#include "language/TextCursor.h"

#include <utility>

#include "ErrorIds.h"
#include "base/Utf8.h"

namespace EmbeddedHV::language {

std::string_view TextCursor::advance()
{
    const auto [code, length] = base::decodeCharacter(_rest);
    if (base::isStrayByte(code))
        failAt(_position, "the text holds bytes that are not UTF-8", errors::kTextEncoding);
    const std::string_view character = _rest.substr(0, length);
    _rest.remove_prefix(length);
    if (character == "\n") {
        ++_position.line;
        _position.column = 1;
    } else {
        ++_position.column;
    }
    return character;
}

void TextCursor::advance(std::size_t characters)
{
    for (; characters > 0; --characters)
        advance();
}

TextPlace textPlace(const Position& position)
{
    return {static_cast<std::uint64_t>(position.line), static_cast<std::uint64_t>(position.column)};
}

void failAt(const Position& position, const std::string& text, const char* id, FaultParts parts)
{
    parts.inJob = textPlace(position);
    parts.what = text;
    throw JobError(id, std::move(parts));
}

} // namespace EmbeddedHV::language
