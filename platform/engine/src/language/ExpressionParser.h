#pragma once

#include <vector>

#include "language/TokenStream.h"

namespace EmbeddedHV::language {

/// An expression with the levels that its tree has. A chain of operators nests to the left without
/// nesting in the text; everything that later walks the tree relies on this bound.
struct Parsed
{
    ExpressionPtr expression;
    int height = 0;
};

struct OperatorWord;

/// Reads expressions off a token stream by recursive descent. The stream must outlive it.
class ExpressionParser
{
public:
    explicit ExpressionParser(TokenStream& tokens) : _tokens(tokens) {}

    Parsed expression();
    /// Whether a lambda begins at the next token.
    bool atLambda() const;

private:
    /// Elements between brackets, the first of which was taken.
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
