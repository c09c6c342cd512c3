#pragma once

#include <vector>

#include "language/TokenStream.h"

namespace EmbeddedHV::language {

/// A parsed expression and the height of its tree. A chain of operators makes a deep tree without
/// nesting in the text. All code that walks the tree relies on the height limit.
struct Parsed
{
    ExpressionPtr expression;
    int height = 0;
};

struct OperatorWord;

/// A recursive-descent parser for expressions. Borrows the token stream.
class ExpressionParser
{
public:
    explicit ExpressionParser(TokenStream& tokens) : _tokens(tokens) {}

    Parsed expression();
    /// Whether a lambda begins at the next token.
    bool atLambda() const;

private:
    /// The elements between brackets. The opening bracket is already consumed.
    struct Elements
    {
        std::vector<ExpressionPtr> expressions;
        int height = 0;
    };

    Parsed lambda();
    Parameter parameter();
    Parsed conditional();
    Parsed binary(int lowestLevel);
    Parsed logicalChain(const OperatorWord& word, Parsed first);
    Parsed unary();
    Parsed power();
    Parsed postfix();
    Parsed primary();
    Parsed number();
    Parsed nameOrCall();
    Parsed parenthesis();
    Parsed list();
    Parsed object();
    Elements elementsUntil(const char* closing);
    void appendElement(Elements& elements);

    TokenStream& _tokens;
};

} // namespace EmbeddedHV::language
