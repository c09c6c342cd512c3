#include "expression/BodyCompiler.h"

#include <algorithm>

#include "ErrorIds.h"
#include "base/NearestName.h"
#include "expression/CaseClauses.h"
#include "expression/FunctionCall.h"
#include "expression/Operators.h"
#include "expression/ValueTypes.h"
#include "functions/FunctionTable.h"
#include "language/Describe.h"
#include "language/TypeParser.h"

namespace EmbeddedHV {

using language::Expression;

namespace {

/// Definitions may use each other several times, so a short text can expand to very long SQL.
constexpr std::size_t kLongestSql = 4'000'000;
constexpr int kDeepest = 500;
constexpr int kLookupsWithoutIndex = 16;

} // namespace

BodyCompiler::BodyCompiler(const LambdaContext& context)
    : _dialect(context.dialect), _input(context.input), _definitions(context.definitions),
      _step(context.step), _fieldsRead(context.fieldsRead)
{
}

const Column* BodyCompiler::findColumn(const std::string& name) const
{
    // Most bodies name few fields. For these a search is cheaper than an index of all fields.
    if (++_lookups <= kLookupsWithoutIndex) {
        const auto found = std::ranges::find(_input, name, &Column::name);
        return found == _input.end() ? nullptr : &*found;
    }
    if (_columns.empty())
        for (const Column& field : _input)
            _columns.emplace(field.name, &field);
    const auto found = _columns.find(name);
    return found == _columns.end() ? nullptr : found->second;
}

SqlExpression BodyCompiler::compile(const Expression& expression, const Scope& scope)
{
    if (_depth == kDeepest)
        at(expression.position)
            .fail(errors::kExpressionSize, "the expression nests too deep with its definitions",
                  {.limit = kDeepest});
    ++_depth;
    SqlExpression result = dispatch(expression, scope);
    --_depth;
    if (result.sql.size() > kLongestSql)
        at(expression.position)
            .fail(errors::kExpressionSize, "the expression grows too large with its definitions");
    return result;
}

/// Writes the SQL for each kind of expression.
struct BodyCompiler::ValueVisitor
{
    BodyCompiler& compiler;
    const Expression& expression;
    const Scope& scope;

    Place place() const { return compiler.at(expression.position); }
    [[noreturn]] SqlExpression fail() const
    {
        place().fail(errors::kNotAValue, "expected a value, found " + kindOf(expression));
    }

    SqlExpression operator()(const language::Null&) const { return {"NULL", ValueType::Null}; }
    SqlExpression operator()(bool value) const
    {
        return {value ? "TRUE" : "FALSE", ValueType::Boolean};
    }
    SqlExpression operator()(std::int64_t value) const
    {
        return {compiler._dialect.literal(value), ValueType::Integer};
    }
    SqlExpression operator()(double value) const
    {
        return {compiler._dialect.literal(value), ValueType::Real};
    }
    SqlExpression operator()(const std::string& text) const
    {
        return {compiler._dialect.literal(text), ValueType::String};
    }
    SqlExpression operator()(const language::List& list) const
    {
        return compiler.compileList(list, scope, place());
    }
    SqlExpression operator()(const language::Tuple&) const { return fail(); }
    SqlExpression operator()(const language::Object&) const { return fail(); }
    SqlExpression operator()(const language::Lambda&) const { return fail(); }
    SqlExpression operator()(const language::Name& name) const
    {
        return compiler.compileName(name, scope, place());
    }
    SqlExpression operator()(const language::Member& member) const
    {
        return compiler.compileField(member, scope, place());
    }
    SqlExpression operator()(const language::Call& call) const
    {
        return compiler.compileCall(call, scope, place());
    }
    SqlExpression operator()(const language::Unary& unary) const
    {
        return compileUnary(compiler._dialect, unary.op, compiler.operand(*unary.operand, scope),
                            place());
    }
    SqlExpression operator()(const language::Binary& binary) const
    {
        const Operand left = compiler.operand(*binary.left, scope);
        const Operand right = compiler.operand(*binary.right, scope);
        return compileBinary(compiler._dialect, binary.op, left, right, place());
    }
    SqlExpression operator()(const language::Conditional& conditional) const
    {
        return compiler.compileConditional(conditional, scope);
    }
};

SqlExpression BodyCompiler::dispatch(const Expression& expression, const Scope& scope)
{
    return std::visit(ValueVisitor{*this, expression, scope}, expression.value);
}

Operand BodyCompiler::operand(const Expression& expression, const Scope& scope)
{
    Operand result{compile(expression, scope), {}, {}};
    result.description = wordOf(result.value.type);
    if (const auto* member = std::get_if<language::Member>(&expression.value))
        result.description += " (the field " + member->field + ")";
    if (const std::string* text = constantText(expression, scope))
        result.constant = *text;
    return result;
}

/// A text that the job writes out, directly or in a definition. Patterns must be known before the
/// first record is read.
const std::string* BodyCompiler::constantText(const Expression& expression,
                                              const Scope& scope) const
{
    const Expression* source = &expression;
    if (const auto* name = std::get_if<language::Name>(&expression.value))
        // A parameter hides a definition of the same name.
        if (const Expression* bound = definition(name->name); bound && !scope.contains(name->name))
            source = bound;
    return std::get_if<std::string>(&source->value);
}

SqlExpression BodyCompiler::compileName(const language::Name& name, const Scope& scope,
                                        const Place& place)
{
    if (const auto bound = scope.find(name.name); bound != scope.end()) {
        if (const auto* value = std::get_if<SqlExpression>(&bound->second))
            return *value;
        const bool record = std::holds_alternative<RecordValue>(bound->second);
        place.fail(errors::kNotAValue,
                   "expected a value, found '" + name.name + "', which is " +
                       (record ? "the whole record; a field of it is written " + name.name + ".name"
                               : std::string("the execution context")));
    }
    const Expression* body = definition(name.name);
    if (body == nullptr)
        failName(name.name, scope, place);
    return compileDefined(name.name, *body, {}, place);
}

void BodyCompiler::failName(const std::string& name, const Scope& scope, const Place& place) const
{
    std::vector<std::string_view> names;
    for (const auto& [known, binding] : scope)
        names.push_back(known);
    for (const auto& [known, expression] : _definitions)
        names.push_back(known);
    const std::string suggestion = base::suggestion(name, names);
    place.fail(errors::kExpressionName,
               "the name '" + name +
                   "' is neither a parameter nor the definition of an expression" + suggestion,
               {.name = name, .hasSuggestion = !suggestion.empty()});
}

/// Compiles the value of a definition. Fails if the definition uses itself.
SqlExpression BodyCompiler::compileDefined(const std::string& name, const Expression& body,
                                           const Scope& scope, const Place& place)
{
    if (std::ranges::find(_definitionsOnTheWay, name) != _definitionsOnTheWay.end())
        place.fail(errors::kRecursion,
                   "the definition of '" + name + "' uses itself; recursion is not allowed");
    _definitionsOnTheWay.push_back(name);
    SqlExpression result = compile(body, scope);
    _definitionsOnTheWay.pop_back();
    return result;
}

SqlExpression BodyCompiler::compileField(const language::Member& member, const Scope& scope,
                                         const Place& place) const
{
    const auto* target = std::get_if<language::Name>(&member.target->value);
    const auto bound = target != nullptr ? scope.find(target->name) : scope.end();
    if (bound == scope.end() || !std::holds_alternative<RecordValue>(bound->second))
        place.fail(errors::kNotAValue, "only the record has fields; '." + member.field +
                                           "' follows " + kindOf(*member.target));
    const Column& field = column(member.field, place);
    if (_fieldsRead)
        _fieldsRead->insert(field.name);
    return {_dialect.name(field.name), field.type};
}

const Column& BodyCompiler::column(const std::string& name, const Place& place) const
{
    if (const Column* found = findColumn(name))
        return *found;
    const std::string suggestion = base::suggestion(name, _input, &Column::name);
    place.fail(errors::kExpressionField, "the records have no field \"" + name + "\"" + suggestion,
               {.field = name, .hasSuggestion = !suggestion.empty()});
}

SqlExpression BodyCompiler::compileList(const language::List& list, const Scope& scope,
                                        const Place& place)
{
    std::string elements;
    for (const language::ExpressionPtr& element : list.elements) {
        const Operand value = operand(*element, scope);
        if (!converts(value.value.type, ValueType::Real))
            place.fail(errors::kOperandType,
                       "a list holds numbers only, found " + value.description);
        elements += (elements.empty() ? "" : ", ") + _dialect.as(value.value, ValueType::Real);
    }
    return {_dialect.list(elements), ValueType::List};
}

/// A chain of conditionals becomes one CASE of any length.
SqlExpression BodyCompiler::compileConditional(const language::Conditional& conditional,
                                               const Scope& scope)
{
    std::vector<CaseClause> clauses;
    const Expression* otherwise = nullptr;
    for (const language::Conditional* next = &conditional; next != nullptr;) {
        clauses.push_back({operand(*next->condition, scope), operand(*next->then, scope),
                           at(next->condition->position)});
        otherwise = next->otherwise.get();
        next =
            otherwise == nullptr ? nullptr : std::get_if<language::Conditional>(&otherwise->value);
    }
    std::optional<Operand> last;
    if (otherwise != nullptr)
        last = operand(*otherwise, scope);
    return compileCase(_dialect, clauses, last);
}

SqlExpression BodyCompiler::compileCall(const language::Call& call, const Scope& scope,
                                        const Place& place)
{
    if (const Expression* bound = definition(call.function)) {
        if (const auto* lambda = std::get_if<language::Lambda>(&bound->value))
            return compileUserCall(call, *lambda, scope, place);
        // A value may have the name of a function of the language. The call then means the
        // function.
        if (!isFunction(call.function))
            place.fail(errors::kUnknownFunction,
                       "'" + call.function + "' is " + kindOf(*bound) + ", not a function");
    }
    std::vector<Operand> arguments;
    for (const language::ExpressionPtr& argument : call.arguments)
        arguments.push_back(operand(*argument, scope));
    return compileFunctionCall(_dialect, call.function, arguments, place);
}

/// Substitutes the arguments for the parameters. The database never sees the function.
SqlExpression BodyCompiler::compileUserCall(const language::Call& call,
                                            const language::Lambda& lambda, const Scope& scope,
                                            const Place& place)
{
    if (call.arguments.size() != lambda.parameters.size())
        place.fail(errors::kArgumentCount,
                   "'" + call.function + "' takes " + std::to_string(lambda.parameters.size()) +
                       " arguments, found " + std::to_string(call.arguments.size()));
    Scope inner;
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        const language::Parameter& parameter = lambda.parameters[i];
        inner[parameter.name] = argumentOf(parameter, *call.arguments[i], scope);
    }
    return compileDefined(call.function, *lambda.body, inner, place);
}

/// Passes the record and the context unchanged. Other arguments become SQL of the declared type.
Binding BodyCompiler::argumentOf(const language::Parameter& parameter, const Expression& argument,
                                 const Scope& scope)
{
    if (const auto* name = std::get_if<language::Name>(&argument.value)) {
        const auto bound = scope.find(name->name);
        if (bound != scope.end() && !std::holds_alternative<SqlExpression>(bound->second)) {
            if (parameter.type && std::holds_alternative<RecordValue>(bound->second))
                checkDeclared(*parameter.type, argument.position);
            return bound->second;
        }
    }
    const Operand value = operand(argument, scope);
    if (parameter.type && value.value.type != ValueType::Null &&
        !fits(*parameter.type, value.value.type))
        at(argument.position)
            .fail(errors::kDeclaredType, "the parameter '" + parameter.name + "' is declared as " +
                                             textOf(*parameter.type) + ", found " +
                                             value.description);
    return value.value;
}

void BodyCompiler::checkDeclared(const language::Type& declared,
                                 const language::Position& position) const
{
    if (declared.kind == language::Type::Kind::Simple &&
        declared.simple == language::SimpleType::Any)
        return;
    const Place place = at(position);
    if (declared.kind != language::Type::Kind::Record)
        place.fail(errors::kDeclaredType, "the record is declared as " + textOf(declared) +
                                              ", which is not a record type");
    for (std::size_t i = 0; i < declared.names.size(); ++i) {
        const Column& field = column(declared.names[i], place);
        if (!fits(declared.elements[i], field.type))
            place.fail(errors::kDeclaredType, "the field \"" + field.name + "\" is declared as " +
                                                  textOf(declared.elements[i]) + " but is " +
                                                  wordOf(field.type));
    }
}

const Expression* BodyCompiler::definition(const std::string& name) const
{
    const auto found = _definitions.find(name);
    return found == _definitions.end() ? nullptr : found->second;
}

} // namespace EmbeddedHV
