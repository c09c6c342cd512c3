#include "language/Lexer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "ErrorIds.h"
#include "base/AsciiText.h"
#include "language/QuotedText.h"
#include "language/TextCursor.h"

namespace EmbeddedHV::language {
namespace {

constexpr std::string_view kKeywords[] = {"val", "if", "else", "true", "false", "null", "_"};

/// A symbol comes before its own prefixes.
constexpr std::string_view kSymbols[] = {"->", "=>", "==", "!=", "<=", ">=", "&&", "||", "**",
                                         "(",  ")",  "[",  "]",  "{",  "}",  ",",  ":",  ".",
                                         "=",  "<",  ">",  "+",  "-",  "*",  "/",  "%",  "!"};

bool isLetter(char c)
{
    return base::isLetter(c) || c == '_' || !base::isAscii(c);
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

/// Skips white space and comments.
void skipSpace(TextCursor& cursor)
{
    while (!cursor.atEnd()) {
        if (isSpace(cursor.peek())) {
            cursor.advance();
        } else if (cursor.startsWith("//")) {
            while (!cursor.atEnd() && cursor.peek() != '\n')
                cursor.advance();
        } else {
            return;
        }
    }
}

Token readName(TextCursor& cursor)
{
    Token token{.kind = Token::Kind::Name, .position = cursor.position(), .text = {}};
    while (isLetter(cursor.peek()) || base::isDigit(cursor.peek()))
        token.text += cursor.advance();
    if (std::ranges::find(kKeywords, token.text) != std::end(kKeywords))
        token.kind = Token::Kind::Keyword;
    return token;
}

void readDigits(TextCursor& cursor, std::string& text)
{
    while (base::isDigit(cursor.peek()))
        text += cursor.advance();
}

/// Reads an optional fraction and exponent. Returns whether there was one.
bool readFraction(TextCursor& cursor, std::string& text)
{
    bool found = false;
    if (cursor.peek() == '.' && base::isDigit(cursor.peek(1))) {
        text += cursor.advance();
        readDigits(cursor, text);
        found = true;
    }
    if (cursor.peek() == 'e' || cursor.peek() == 'E') {
        const bool sign = cursor.peek(1) == '+' || cursor.peek(1) == '-';
        if (base::isDigit(cursor.peek(sign ? 2 : 1))) {
            text += cursor.advance();
            if (sign)
                text += cursor.advance();
            readDigits(cursor, text);
            found = true;
        }
    }
    return found;
}

/// The real nearest to a number's text. A number that is too small becomes zero.
double realOf(const Token& token)
{
    double value = 0;
    const char* end = token.text.data() + token.text.size();
    if (std::from_chars(token.text.data(), end, value).ec == std::errc())
        return value;
    // from_chars reports too small and too large in the same way. strtod distinguishes them.
    value = std::strtod(token.text.c_str(), nullptr);
    if (!std::isfinite(value))
        failAt(token.position, describe(token) + " is too large", errors::kSyntax);
    return value;
}

Token readNumber(TextCursor& cursor)
{
    Token token{.kind = Token::Kind::Integer, .position = cursor.position(), .text = {}};
    readDigits(cursor, token.text);
    if (readFraction(cursor, token.text))
        token.kind = Token::Kind::Real;
    // Otherwise "12ab" would be two tokens and fail later with a misleading message.
    if (isLetter(cursor.peek()))
        failAt(cursor.position(), "expected the end of number " + token.text + ", found a letter",
               errors::kSyntax);
    token.real = realOf(token);
    if (token.kind == Token::Kind::Integer) {
        constexpr std::uint64_t kLargest = std::uint64_t{1} << 63;
        const char* end = token.text.data() + token.text.size();
        const auto result = std::from_chars(token.text.data(), end, token.integer);
        if (result.ec != std::errc() || token.integer > kLargest)
            token.kind = Token::Kind::Real;
    }
    return token;
}

Token readSymbol(TextCursor& cursor)
{
    Token token{.kind = Token::Kind::Symbol, .position = cursor.position(), .text = {}};
    for (const std::string_view symbol : kSymbols) {
        if (cursor.startsWith(symbol)) {
            token.text = symbol;
            cursor.advance(symbol.size());
            return token;
        }
    }
    const std::string found(cursor.advance());
    const bool visible = found[0] > ' ' && found[0] != '\x7F';
    failAt(token.position,
           "expected a name, a number, a string or an operator, found " +
               (visible ? "'" + found + "'" : std::string("a control character")),
           errors::kSyntax, {.kind = found == "'" ? kinds::kApostrophe : ""});
}

Token readToken(TextCursor& cursor)
{
    const char first = cursor.peek();
    if (isLetter(first))
        return readName(cursor);
    if (base::isDigit(first))
        return readNumber(cursor);
    if (first == '"' || first == '`') {
        const Position position = cursor.position();
        const auto kind = first == '"' ? Token::Kind::String : Token::Kind::Quoted;
        return Token{.kind = kind, .position = position, .text = readQuotedText(cursor)};
    }
    return readSymbol(cursor);
}

/// Records for each "(" the index of its ")". The parser can then look past a parenthesis at once,
/// at any depth. Unmatched parentheses are left for the parser to reject.
void matchParentheses(std::vector<Token>& tokens)
{
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].isSymbol("(")) {
            open.push_back(i);
        } else if (tokens[i].isSymbol(")") && !open.empty()) {
            tokens[open.back()].closing = i;
            open.pop_back();
        }
    }
}

} // namespace

std::vector<Token> tokenize(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    std::vector<Token> tokens;
    TextCursor cursor(text);
    for (skipSpace(cursor); !cursor.atEnd(); skipSpace(cursor))
        tokens.push_back(readToken(cursor));
    tokens.push_back(Token{.kind = Token::Kind::End, .position = cursor.position(), .text = {}});
    matchParentheses(tokens);
    return tokens;
}

} // namespace EmbeddedHV::language
