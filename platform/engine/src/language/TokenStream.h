#pragma once

#include <string_view>
#include <vector>

#include "JobError.h"
#include "language/Token.h"

namespace EmbeddedHV::language {

/// The tokens of a text, with a current position. Errors name the position.
class TokenStream
{
public:
    /// The limit for the nesting of expressions and types. The parser recurses at least once for
    /// each level, so this limits the stack that a text can use.
    static constexpr int kDeepest = 500;

    explicit TokenStream(std::string_view text);

    /// The token `offset` places ahead; End past the last token.
    const Token& peek(std::size_t offset = 0) const;
    /// The token after the ")" that closes the "(" `offset` places ahead; null if it is not closed.
    const Token* afterParenthesis(std::size_t offset) const;
    const Token& take();
    /// Consumes the token if it is this symbol. Returns whether it was.
    bool takeSymbol(const char* symbol);
    /// Consumes the token if it is this keyword. Returns whether it was.
    bool takeKeyword(const char* word);
    /// Consumes this symbol, or fails. The message names `expected`, or the symbol if `expected` is
    /// null.
    void expectSymbol(const char* symbol, const char* expected = nullptr);
    /// Consumes a plain name or a name in backquotes.
    std::string expectName(const std::string& expected);
    /// Consumes a plain name. Steps and definitions allow only these.
    std::string expectPlainName(const std::string& expected);

    /// Consumes the name of a field after a dot.
    std::string expectField();

    /// Throws JobError "expected X, found Y" at the next token.
    [[noreturn]] void failExpected(const std::string& expected, FaultParts parts = {}) const;
    /// Throws JobError for expressions that are nested too deeply.
    [[noreturn]] static void failNesting(const Position& position);

    /// Counts one nesting level during its lifetime.
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
