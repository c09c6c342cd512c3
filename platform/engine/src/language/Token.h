#pragma once

#include <cstdint>
#include <string>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// A token of a job text.
struct Token
{
    /// The kinds of tokens.
    enum class Kind
    {
        Name,
        Quoted,  ///< a name in backquotes; `text` is without them
        Keyword, ///< val, if, else, true, false, null and a lone `_`
        String,  ///< `text` is without quotes and with its escapes resolved
        Integer,
        Real,
        Symbol,
        End
    };
    Kind kind = Kind::End;
    Position position;
    std::string text;            ///< as written, except for quoted names and strings
    std::uint64_t integer = 0;   ///< Integer: up to 2^63, which is valid only after a minus
    double real = 0;             ///< Real, and the same number for an Integer
    std::size_t closing = kNone; ///< for "(": the index of its ")"

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    bool is(Kind wanted, const char* wantedText) const
    {
        return kind == wanted && text == wantedText;
    }
    bool isSymbol(const char* symbol) const { return is(Kind::Symbol, symbol); }
    bool isKeyword(const char* word) const { return is(Kind::Keyword, word); }
    bool isName() const { return kind == Kind::Name || kind == Kind::Quoted; }
};

/// The token as a message shows it: "name 'read'", "string \"abc\"", "the end of the text".
std::string describe(const Token& token);

} // namespace EmbeddedHV::language
