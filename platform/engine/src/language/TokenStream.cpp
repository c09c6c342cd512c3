#include "language/TokenStream.h"

#include <algorithm>
#include <utility>

#include "ErrorIds.h"
#include "language/Lexer.h"
#include "language/TextCursor.h"

namespace EmbeddedHV::language {

TokenStream::TokenStream(std::string_view text) : _tokens(tokenize(text)) {}

const Token& TokenStream::peek(std::size_t offset) const
{
    return _tokens[std::min(_next + offset, _tokens.size() - 1)];
}

const Token* TokenStream::afterParenthesis(std::size_t offset) const
{
    const std::size_t closing = peek(offset).closing;
    return closing == Token::kNone ? nullptr : &_tokens[closing + 1];
}

const Token& TokenStream::take()
{
    const Token& token = peek();
    if (token.kind != Token::Kind::End)
        ++_next;
    return token;
}

bool TokenStream::takeSymbol(const char* symbol)
{
    if (!peek().isSymbol(symbol))
        return false;
    take();
    return true;
}

bool TokenStream::takeKeyword(const char* word)
{
    if (!peek().isKeyword(word))
        return false;
    take();
    return true;
}

void TokenStream::expectSymbol(const char* symbol, const char* expected)
{
    if (!takeSymbol(symbol))
        failExpected(expected != nullptr ? expected : "'" + std::string(symbol) + "'");
}

std::string TokenStream::expectName(const std::string& expected)
{
    if (!peek().isName())
        failExpected(expected);
    return take().text;
}

std::string TokenStream::expectPlainName(const std::string& expected)
{
    if (peek().kind != Token::Kind::Name)
        failExpected(expected);
    return take().text;
}

std::string TokenStream::expectField()
{
    const std::string expected = "the name of a field after '.'";
    // Users of other languages put names into double quotes.
    if (peek().kind == Token::Kind::String)
        failExpected(expected, {.name = peek().text, .kind = kinds::kFieldInQuotes});
    return expectName(expected);
}

void TokenStream::failExpected(const std::string& expected, FaultParts parts) const
{
    failAt(peek().position, "expected " + expected + ", found " + describe(peek()), errors::kSyntax,
           std::move(parts));
}

void TokenStream::failNesting(const Position& position)
{
    failAt(position,
           "expressions nest deeper than the " + std::to_string(kDeepest) + " levels allowed",
           errors::kNesting, {.limit = kDeepest});
}

TokenStream::Level::Level(TokenStream& stream) : _stream(stream)
{
    if (stream._depth == kDeepest)
        failNesting(stream.peek().position);
    ++stream._depth;
}

} // namespace EmbeddedHV::language
