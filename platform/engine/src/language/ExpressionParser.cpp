#include "language/ExpressionParser.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "ErrorIds.h"
#include "language/TextCursor.h"
#include "language/TypeParser.h"

namespace EmbeddedHV::language {

/// A binary operator. A higher level binds more tightly. power() parses `**`.
struct OperatorWord
{
    const char* symbol;
    BinaryOperator op;
    int level;
};

namespace {

constexpr int kConjunctionLevel = 2;
constexpr int kComparisonLevel = 3;

constexpr OperatorWord kOperators[] = {
    {"||", BinaryOperator::Or, 1},
    {"&&", BinaryOperator::And, kConjunctionLevel},
    {"==", BinaryOperator::Equal, kComparisonLevel},
    {"!=", BinaryOperator::NotEqual, kComparisonLevel},
    {"<", BinaryOperator::Less, kComparisonLevel},
    {"<=", BinaryOperator::LessOrEqual, kComparisonLevel},
    {">", BinaryOperator::Greater, kComparisonLevel},
    {">=", BinaryOperator::GreaterOrEqual, kComparisonLevel},
    {"+", BinaryOperator::Add, 4},
    {"-", BinaryOperator::Subtract, 4},
    {"*", BinaryOperator::Multiply, 5},
    {"/", BinaryOperator::Divide, 5},
    {"%", BinaryOperator::Modulo, 5},
};

const OperatorWord* operatorAt(const Token& token)
{
    if (token.kind != Token::Kind::Symbol)
        return nullptr;
    const auto* found = std::ranges::find(kOperators, token.text, &OperatorWord::symbol);
    return found == std::end(kOperators) ? nullptr : found;
}

/// Makes a tree node on top of trees of the given height.
Parsed node(const Position& position, Expression::Value value, int heightBelow)
{
    if (heightBelow >= TokenStream::kDeepest)
        TokenStream::failNesting(position);
    auto expression = std::make_unique<Expression>(Expression{std::move(value), position});
    return {std::move(expression), heightBelow + 1};
}

/// A binary operator at the position of the operator.
Parsed joined(const Position& position, BinaryOperator op, Parsed left, Parsed right)
{
    const int height = std::max(left.height, right.height);
    return node(position, Binary{op, std::move(left.expression), std::move(right.expression)},
                height);
}

/// The operands of a chain of `&&` or `||`, each with the position of the operator before it.
using Operands = std::vector<std::pair<Position, Parsed>>;

/// Both operators are associative. So a chain becomes a balanced tree, and a condition with
/// thousands of terms stays within the limit.
Parsed balanced(Operands& operands, std::size_t begin, std::size_t end, BinaryOperator op)
{
    if (end - begin == 1)
        return std::move(operands[begin].second);
    const std::size_t middle = begin + (end - begin) / 2;
    Parsed left = balanced(operands, begin, middle, op);
    Parsed right = balanced(operands, middle, end, op);
    return joined(operands[middle].first, op, std::move(left), std::move(right));
}

} // namespace

Parsed ExpressionParser::expression()
{
    const TokenStream::Level level(_tokens);
    if (atLambda())
        return lambda();
    if (_tokens.peek().isKeyword("if"))
        return conditional();
    return binary(1);
}

/// Decided by the token after the parameters, without parsing them.
bool ExpressionParser::atLambda() const
{
    if (_tokens.peek().isSymbol("(")) {
        const Token* after = _tokens.afterParenthesis(0);
        return after != nullptr && after->isSymbol("=>");
    }
    // Here only a declared parameter has a name followed by a colon.
    return _tokens.peek().isName() &&
           (_tokens.peek(1).isSymbol("=>") || _tokens.peek(1).isSymbol(":"));
}

Parsed ExpressionParser::lambda()
{
    const Position position = _tokens.peek().position;
    Lambda result;
    if (!_tokens.takeSymbol("(")) {
        result.parameters.push_back(parameter());
    } else if (!_tokens.takeSymbol(")")) {
        do
            result.parameters.push_back(parameter());
        while (_tokens.takeSymbol(","));
        _tokens.expectSymbol(")", "',' or ')' after a parameter");
    }
    _tokens.expectSymbol("=>");
    Parsed body = expression();
    result.body = std::move(body.expression);
    return node(position, std::move(result), body.height);
}

Parameter ExpressionParser::parameter()
{
    Parameter result;
    result.name = _tokens.expectName("the name of a parameter");
    if (_tokens.takeSymbol(":"))
        result.type = std::make_unique<Type>(parseType(_tokens));
    return result;
}

Parsed ExpressionParser::conditional()
{
    const Position position = _tokens.take().position;
    _tokens.expectSymbol("(", "'(' before the condition");
    Parsed condition = expression();
    _tokens.expectSymbol(")", "')' after the condition");
    Parsed then = expression();
    Parsed otherwise;
    if (_tokens.takeKeyword("else"))
        otherwise = expression();
    const int height = std::max({condition.height, then.height, otherwise.height});
    return node(position,
                Conditional{std::move(condition.expression), std::move(then.expression),
                            std::move(otherwise.expression)},
                height);
}

/// Parses operands and operators down to a level, by precedence climbing.
Parsed ExpressionParser::binary(int lowestLevel)
{
    Parsed left = unary();
    const OperatorWord* word = operatorAt(_tokens.peek());
    while (word != nullptr && word->level >= lowestLevel) {
        if (word->level <= kConjunctionLevel) {
            left = logicalChain(*word, std::move(left));
        } else {
            const Position position = _tokens.take().position;
            Parsed right = binary(word->level + 1);
            left = joined(position, word->op, std::move(left), std::move(right));
        }
        const OperatorWord* next = operatorAt(_tokens.peek());
        // Reject a < b < c: it would compare a boolean with c.
        if (word->level == kComparisonLevel && next != nullptr && next->level == kComparisonLevel)
            _tokens.failExpected("'&&' or '||' between two comparisons");
        word = next;
    }
    return left;
}

Parsed ExpressionParser::logicalChain(const OperatorWord& word, Parsed first)
{
    Operands operands;
    operands.emplace_back(Position{}, std::move(first));
    while (_tokens.peek().isSymbol(word.symbol)) {
        const Position position = _tokens.take().position;
        operands.emplace_back(position, binary(word.level + 1));
    }
    return balanced(operands, 0, operands.size(), word.op);
}

Parsed ExpressionParser::unary()
{
    const Token& token = _tokens.peek();
    if (!token.isSymbol("-") && !token.isSymbol("!"))
        return power();
    const TokenStream::Level level(_tokens);
    const Position position = token.position;
    const UnaryOperator op = token.isSymbol("-") ? UnaryOperator::Minus : UnaryOperator::Not;
    _tokens.take();
    // The least integer has no positive counterpart, so it is parsed with its sign.
    constexpr std::uint64_t kLeast = std::uint64_t{1} << 63;
    const Token& number = _tokens.peek();
    if (op == UnaryOperator::Minus && number.kind == Token::Kind::Integer &&
        number.integer == kLeast && !_tokens.peek(1).isSymbol("**")) {
        _tokens.take();
        return node(position, INT64_MIN, 0);
    }
    Parsed operand = unary();
    return node(position, Unary{op, std::move(operand.expression)}, operand.height);
}

/// Right-associative. An exponent may be a power itself and may have a sign.
Parsed ExpressionParser::power()
{
    Parsed base = postfix();
    if (!_tokens.peek().isSymbol("**"))
        return base;
    const TokenStream::Level level(_tokens);
    const Position position = _tokens.take().position;
    Parsed exponent = unary();
    return joined(position, BinaryOperator::Power, std::move(base), std::move(exponent));
}

Parsed ExpressionParser::postfix()
{
    Parsed target = primary();
    while (_tokens.peek().isSymbol(".")) {
        _tokens.take();
        const Position position = _tokens.peek().position;
        std::string field = _tokens.expectField();
        target =
            node(position, Member{std::move(target.expression), std::move(field)}, target.height);
    }
    return target;
}

Parsed ExpressionParser::primary()
{
    const Token& token = _tokens.peek();
    switch (token.kind) {
    case Token::Kind::Integer:
    case Token::Kind::Real:
        return number();
    case Token::Kind::String:
        _tokens.take();
        return node(token.position, token.text, 0);
    case Token::Kind::Name:
    case Token::Kind::Quoted:
        return nameOrCall();
    default:
        break;
    }
    if (_tokens.takeKeyword("true"))
        return node(token.position, true, 0);
    if (_tokens.takeKeyword("false"))
        return node(token.position, false, 0);
    if (_tokens.takeKeyword("null"))
        return node(token.position, Null{}, 0);
    if (token.isSymbol("("))
        return parenthesis();
    if (token.isSymbol("["))
        return list();
    if (token.isSymbol("{"))
        return object();
    _tokens.failExpected("an expression");
}

Parsed ExpressionParser::number()
{
    const Token& token = _tokens.take();
    constexpr std::uint64_t kLargest = INT64_MAX;
    // Larger numbers become reals, so that no value wraps around.
    if (token.kind == Token::Kind::Integer && token.integer <= kLargest)
        return node(token.position, static_cast<std::int64_t>(token.integer), 0);
    return node(token.position, token.real, 0);
}

Parsed ExpressionParser::nameOrCall()
{
    const Token& token = _tokens.take();
    if (token.kind == Token::Kind::Quoted || !_tokens.takeSymbol("("))
        return node(token.position, Name{token.text}, 0);
    Elements arguments = elementsUntil(")");
    return node(token.position, Call{token.text, std::move(arguments.expressions)},
                arguments.height);
}

/// An expression in parentheses, or a tuple if there is a comma.
Parsed ExpressionParser::parenthesis()
{
    const Position position = _tokens.take().position;
    if (_tokens.takeSymbol(")"))
        return node(position, Tuple{}, 0);
    Elements elements;
    appendElement(elements);
    if (_tokens.takeSymbol(")"))
        return {std::move(elements.expressions.front()), elements.height};
    _tokens.expectSymbol(",", "',' or ')'");
    if (!_tokens.takeSymbol(")")) {
        do
            appendElement(elements);
        while (_tokens.takeSymbol(","));
        _tokens.expectSymbol(")", "',' or ')'");
    }
    return node(position, Tuple{std::move(elements.expressions)}, elements.height);
}

Parsed ExpressionParser::list()
{
    const Position position = _tokens.take().position;
    Elements elements = elementsUntil("]");
    return node(position, List{std::move(elements.expressions)}, elements.height);
}

/// Like JSON, but the values are expressions and may refer to definitions.
Parsed ExpressionParser::object()
{
    const Position position = _tokens.take().position;
    Object result;
    int height = 0;
    std::unordered_set<std::string> keys;
    if (_tokens.takeSymbol("}"))
        return node(position, std::move(result), height);
    do {
        const Token& key = _tokens.peek();
        if (key.kind != Token::Kind::String)
            _tokens.failExpected("a key in double quotes");
        if (!keys.insert(key.text).second)
            failAt(key.position, "the key \"" + key.text + "\" occurs twice in this object",
                   errors::kSyntax);
        _tokens.take();
        _tokens.expectSymbol(":", "':' after the key");
        Parsed value = expression();
        height = std::max(height, value.height);
        result.members.emplace_back(key.text, std::move(value.expression));
    } while (_tokens.takeSymbol(","));
    _tokens.expectSymbol("}", "',' or '}'");
    return node(position, std::move(result), height);
}

ExpressionParser::Elements ExpressionParser::elementsUntil(const char* closing)
{
    Elements elements;
    if (_tokens.takeSymbol(closing))
        return elements;
    do
        appendElement(elements);
    while (_tokens.takeSymbol(","));
    _tokens.expectSymbol(closing, ("',' or '" + std::string(closing) + "'").c_str());
    return elements;
}

void ExpressionParser::appendElement(Elements& elements)
{
    Parsed element = expression();
    elements.height = std::max(elements.height, element.height);
    elements.expressions.push_back(std::move(element.expression));
}

} // namespace EmbeddedHV::language
