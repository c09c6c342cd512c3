#include "language/Token.h"

#include "base/Utf8.h"

namespace EmbeddedHV::language {
namespace {

/// Messages show only the beginning of a long text, cut between characters.
std::string shortened(const std::string& text)
{
    constexpr std::size_t kShown = 40;
    if (text.size() <= kShown)
        return text;
    return text.substr(0, base::wholeCharacters(text, kShown)) + "...";
}

} // namespace

std::string describe(const Token& token)
{
    switch (token.kind) {
    case Token::Kind::Name:
    case Token::Kind::Quoted:
        return "name '" + shortened(token.text) + "'";
    case Token::Kind::String:
        return "string \"" + shortened(token.text) + "\"";
    case Token::Kind::Integer:
    case Token::Kind::Real:
        return "number " + shortened(token.text);
    case Token::Kind::Keyword:
    case Token::Kind::Symbol:
        return "'" + token.text + "'";
    case Token::Kind::End:
        break;
    }
    return "the end of the text";
}

} // namespace EmbeddedHV::language
