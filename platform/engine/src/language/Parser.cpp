#include "language/Parser.h"

#include <set>
#include <utility>

#include "ErrorIds.h"
#include "functions/FunctionTable.h"
#include "language/ExpressionParser.h"
#include "language/TokenStream.h"

namespace EmbeddedHV::language {
namespace {

/// Parses definitions and statements. Uses ExpressionParser for expressions.
class ProgramParser
{
public:
    explicit ProgramParser(std::string_view text) : _tokens(text), _expressions(_tokens) {}

    Program program();

private:
    Definition definition();
    bool atPipeline() const;
    bool atSingleCall() const;
    Pipeline pipeline();
    Step step();
    Argument argument();

    TokenStream _tokens;
    ExpressionParser _expressions;
    /// Names that are bound to lambdas so far. A call of such a name is not a step.
    std::set<std::string> _lambdas;
};

Program ProgramParser::program()
{
    Program result;
    while (_tokens.peek().kind != Token::Kind::End) {
        if (_tokens.peek().isKeyword("val"))
            result.items.emplace_back(definition());
        else if (_tokens.peek().kind == Token::Kind::Name)
            result.items.emplace_back(pipeline());
        else
            _tokens.failExpected("'val' or the name of a step", {.kind = kinds::kBetweenSteps});
    }
    return result;
}

Definition ProgramParser::definition()
{
    Definition result;
    result.position = _tokens.take().position;
    result.name = _tokens.expectPlainName("a name after 'val'");
    _tokens.expectSymbol("=", "'=' after the name");
    if (atPipeline()) {
        result.value = pipeline();
        return result;
    }
    if (_expressions.atLambda())
        _lambdas.insert(result.name);
    result.value = _expressions.expression().expression;
    return result;
}

/// A definition binds a chain if its right side has an arrow or a namespace, or is a single call of
/// something that is not a function and so must be a step.
bool ProgramParser::atPipeline() const
{
    if (_tokens.peek().kind != Token::Kind::Name)
        return false;
    const Token& next = _tokens.peek(1);
    if (next.isSymbol("->"))
        return true;
    if (next.isSymbol(":"))
        return _tokens.peek(2).kind == Token::Kind::Name && _tokens.peek(3).isSymbol("(");
    if (!next.isSymbol("("))
        return false;
    const Token* after = _tokens.afterParenthesis(1);
    if (after != nullptr && after->isSymbol("->"))
        return true;
    const std::string& name = _tokens.peek().text;
    return atSingleCall() && !isFunction(name) && !_lambdas.contains(name);
}

/// Whether the definition ends with the call that begins here. A call without closing parenthesis
/// counts too: as a step it gives a better error message.
bool ProgramParser::atSingleCall() const
{
    const Token* after = _tokens.afterParenthesis(1);
    return after == nullptr || after->kind == Token::Kind::End || after->isKeyword("val") ||
           after->kind == Token::Kind::Name;
}

Pipeline ProgramParser::pipeline()
{
    Pipeline result;
    result.position = _tokens.peek().position;
    if (_tokens.peek(1).isSymbol("->"))
        result.input = _tokens.take().text;
    else
        result.steps.push_back(step());
    while (_tokens.takeSymbol("->"))
        result.steps.push_back(step());
    return result;
}

Step ProgramParser::step()
{
    Step result;
    result.position = _tokens.peek().position;
    result.name = _tokens.expectPlainName("the name of a step");
    if (_tokens.takeSymbol(":")) {
        result.nameSpace = std::move(result.name);
        result.name =
            _tokens.expectPlainName("the name of a step after '" + result.nameSpace + ":'");
    }
    if (!_tokens.takeSymbol("("))
        _tokens.failExpected("'(' or '->'", {.kind = kinds::kBetweenSteps});
    if (_tokens.takeSymbol(")"))
        return result;
    do
        result.arguments.push_back(argument());
    while (_tokens.takeSymbol(","));
    _tokens.expectSymbol(")", "',' or ')'");
    return result;
}

Argument ProgramParser::argument()
{
    Argument result;
    const Token& first = _tokens.peek();
    result.position = first.position;
    if (_tokens.takeKeyword("_"))
        return result;
    // `a: b` names an input, but `a: Real => ...` is a parameter with its type.
    const bool tag = first.isName() || first.kind == Token::Kind::String;
    if (tag && _tokens.peek(1).isSymbol(":") && _tokens.peek(2).kind == Token::Kind::Name &&
        !_tokens.peek(3).isSymbol("=>")) {
        result.kind = Argument::Kind::Tagged;
        result.tag = _tokens.take().text;
        _tokens.take();
        result.input = _tokens.take().text;
        return result;
    }
    result.kind = Argument::Kind::Value;
    result.value = _expressions.expression().expression;
    return result;
}

} // namespace

Program parseProgram(std::string_view text)
{
    return ProgramParser(text).program();
}

Definitions boundValues(const Program& program)
{
    Definitions values;
    for (const auto& item : program.items)
        if (const auto* definition = std::get_if<Definition>(&item))
            if (const auto* bound = std::get_if<ExpressionPtr>(&definition->value))
                values[definition->name] = bound->get();
    return values;
}

ExpressionPtr parseExpression(std::string_view text)
{
    TokenStream tokens(text);
    ExpressionPtr expression = ExpressionParser(tokens).expression().expression;
    if (tokens.peek().kind != Token::Kind::End)
        tokens.failExpected("the end of the expression");
    return expression;
}

} // namespace EmbeddedHV::language
