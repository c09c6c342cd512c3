#include "language/QuotedText.h"

#include <algorithm>
#include <utility>

#include "ErrorIds.h"
#include "base/AsciiText.h"
#include "base/Utf8.h"

namespace EmbeddedHV::language {
namespace {

constexpr std::pair<char, char> kEscapes[] = {{'"', '"'},  {'\\', '\\'}, {'/', '/'},
                                              {'b', '\b'}, {'f', '\f'},  {'n', '\n'},
                                              {'r', '\r'}, {'t', '\t'},  {'`', '`'}};

/// Returns a negative number if the character is not a hexadecimal digit.
int hexDigit(char c)
{
    if (base::isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

/// The four digits of a `\u` escape.
char32_t readHexDigits(TextCursor& cursor)
{
    char32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = hexDigit(cursor.peek());
        if (digit < 0)
            failAt(cursor.position(), "expected four hexadecimal digits after \\u",
                   errors::kSyntax);
        value = value * 16 + static_cast<char32_t>(digit);
        cursor.advance();
    }
    return value;
}

/// A character beyond U+FFFF is escaped as a high and a low surrogate.
char32_t readUnicodeEscape(TextCursor& cursor, const Position& start)
{
    const char32_t high = readHexDigits(cursor);
    if (high < 0xD800 || high > 0xDFFF)
        return high;
    if (high < 0xDC00 && cursor.startsWith("\\u")) {
        cursor.advance(2);
        const char32_t low = readHexDigits(cursor);
        if (low >= 0xDC00 && low <= 0xDFFF)
            return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
    }
    failAt(start, "a \\u escape is half of a surrogate pair", errors::kSyntax);
}

void readEscape(TextCursor& cursor, std::string& text)
{
    const Position start = cursor.position();
    cursor.advance();
    const char letter = cursor.peek();
    if (letter == 'u') {
        cursor.advance();
        base::appendCharacter(text, readUnicodeEscape(cursor, start));
        return;
    }
    const auto* found = std::ranges::find(kEscapes, letter, &std::pair<char, char>::first);
    if (found == std::end(kEscapes))
        failAt(start, "expected an escape as in JSON after the backslash", errors::kSyntax);
    text += found->second;
    cursor.advance();
}

} // namespace

std::string readQuotedText(TextCursor& cursor)
{
    const Position start = cursor.position();
    const char quote = cursor.peek();
    const std::string what = quote == '"' ? "string" : "name in backquotes";
    std::string text;
    cursor.advance();
    while (cursor.peek() != quote || cursor.atEnd()) {
        if (cursor.atEnd() || cursor.peek() == '\n')
            failAt(start,
                   "expected the closing quote of this " + what + ", found the end of the " +
                       (cursor.atEnd() ? "text" : "line"),
                   errors::kSyntax);
        if (cursor.peek() == '\\')
            readEscape(cursor, text);
        else
            text += cursor.advance();
    }
    cursor.advance();
    if (quote == '`' && text.empty())
        failAt(start, "expected a name between the backquotes", errors::kSyntax);
    return text;
}

} // namespace EmbeddedHV::language
