#include "language/TypeParser.h"

#include <algorithm>

namespace EmbeddedHV::language {
namespace {

/// In the order of SimpleType.
constexpr const char* kSimpleTypes[] = {"Any",  "Number", "String", "Int",  "Real",
                                        "Char", "Bool",   "Time",   "Date", "Timestamp"};

constexpr const char* kExpectedType = "a type (Any, Number, String, Int, Real, Char, Bool, Time, "
                                      "Date, Timestamp, or one in brackets)";

Type parseSimple(TokenStream& tokens)
{
    const Token& token = tokens.peek();
    const auto* word = std::ranges::find(kSimpleTypes, token.text);
    if (token.kind != Token::Kind::Name || word == std::end(kSimpleTypes))
        tokens.failExpected(kExpectedType);
    tokens.take();
    Type type;
    type.simple = static_cast<SimpleType>(word - std::begin(kSimpleTypes));
    return type;
}

/// The rest of a list type after its opening bracket.
Type parseListRest(TokenStream& tokens)
{
    Type type;
    type.kind = Type::Kind::List;
    type.elements.push_back(parseType(tokens));
    tokens.expectSymbol("]");
    return type;
}

Type parseTupleRest(TokenStream& tokens)
{
    Type type;
    type.kind = Type::Kind::Tuple;
    do
        type.elements.push_back(parseType(tokens));
    while (tokens.takeSymbol(","));
    tokens.expectSymbol(")", "',' or ')'");
    return type;
}

void parseField(TokenStream& tokens, Type& record)
{
    if (tokens.peek().kind != Token::Kind::String && !tokens.peek().isName())
        tokens.failExpected("the name of a field");
    record.names.push_back(tokens.take().text);
    tokens.expectSymbol(":");
    record.elements.push_back(parseType(tokens));
}

Type parseRecordRest(TokenStream& tokens)
{
    Type type;
    type.kind = Type::Kind::Record;
    if (tokens.takeSymbol("}"))
        return type;
    do
        parseField(tokens, type);
    while (tokens.takeSymbol(","));
    tokens.expectSymbol("}", "',' or '}'");
    return type;
}

} // namespace

Type parseType(TokenStream& tokens)
{
    const TokenStream::Level level(tokens);
    if (tokens.takeSymbol("["))
        return parseListRest(tokens);
    if (tokens.takeSymbol("("))
        return parseTupleRest(tokens);
    if (tokens.takeSymbol("{"))
        return parseRecordRest(tokens);
    return parseSimple(tokens);
}

const char* wordOf(SimpleType type)
{
    return kSimpleTypes[static_cast<std::size_t>(type)];
}

std::string textOf(const Type& type)
{
    std::string inner;
    for (std::size_t i = 0; i < type.elements.size(); ++i) {
        inner += i > 0 ? ", " : "";
        inner += type.kind == Type::Kind::Record ? type.names[i] + ": " : "";
        inner += textOf(type.elements[i]);
    }
    switch (type.kind) {
    case Type::Kind::List:
        return "[" + inner + "]";
    case Type::Kind::Tuple:
        return "(" + inner + ")";
    case Type::Kind::Record:
        return "{" + inner + "}";
    case Type::Kind::Simple:
        break;
    }
    return wordOf(type.simple);
}

} // namespace EmbeddedHV::language
