#pragma once

#include <string_view>
#include <vector>

#include "language/Token.h"

namespace EmbeddedHV::language {

/// The tokens of a text with a place in them, and the errors that name the place.
class TokenStream
{
public:
    /// The levels to which expressions and types may nest. A parser calls itself once a level or
    /// more, so this bounds the stack that a text can make it use.
    static constexpr int kDeepest = 500;

    explicit TokenStream(std::string_view text);

    /// The token `offset` places ahead; End past the last one.
    const Token& peek(std::size_t offset = 0) const;
    /// The token after the ")" of the "(" that stands `offset` places ahead; null if none closes
    /// it.
    const Token* afterParenthesis(std::size_t offset) const;
    const Token& take();
    /// Takes the token if it is this symbol or keyword.
    bool takeSymbol(const char* symbol);
    bool takeKeyword(const char* word);
    /// Takes this symbol or fails; `expected` is what the message names, the symbol if it is null.
    void expectSymbol(const char* symbol, const char* expected = nullptr);
    /// Takes a plain name or one in backquotes.
    std::string expectName(const std::string& expected);
    /// Takes a plain name: steps and definitions have no others.
    std::string expectPlainName(const std::string& expected);

    /// "expected X, found Y" at the next token.
    [[noreturn]] void failExpected(const std::string& expected) const;
    [[noreturn]] static void failNesting(const Position& position);

    /// Counts one level for as long as it lives.
    class Level
    {
    public:
        explicit Level(TokenStream& stream);
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --_stream._depth; }

    private:
        TokenStream& _stream;
    };

private:
    std::vector<Token> _tokens;
    std::size_t _next = 0;
    int _depth = 0;
};

} // namespace EmbeddedHV::language
