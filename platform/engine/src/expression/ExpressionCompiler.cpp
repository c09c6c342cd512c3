#include "expression/ExpressionCompiler.h"

#include "ErrorIds.h"
#include "expression/BodyCompiler.h"
#include "language/Describe.h"

namespace EmbeddedHV {
namespace {

using language::Expression;
using language::Lambda;

constexpr const char* kRecordForm = "expected a lambda over a record, ctx => x => body, found ";

/// A lambda over a record: the scope of its two parameters, and its body.
struct RecordLambda
{
    Scope scope;
    const Expression* body;
};

const Lambda& lambdaOf(const Expression& expression, const Expression& whole,
                       const std::string& step)
{
    const auto* lambda = std::get_if<Lambda>(&expression.value);
    if (lambda == nullptr || lambda->parameters.size() != 1)
        language::failInStep(errors::kLambdaForm, step, whole.position,
                             kRecordForm + (lambda == nullptr
                                                ? kindOf(expression)
                                                : "a lambda with " +
                                                      std::to_string(lambda->parameters.size()) +
                                                      " parameters"));
    return *lambda;
}

RecordLambda open(const Expression& expression, const BodyCompiler& compiler,
                  const std::string& step)
{
    const Lambda& outer = lambdaOf(expression, expression, step);
    const Lambda& inner = lambdaOf(*outer.body, expression, step);
    const language::Parameter& record = inner.parameters.front();
    if (record.type)
        compiler.checkDeclared(*record.type, outer.body->position);
    RecordLambda result{{}, inner.body.get()};
    result.scope[outer.parameters.front().name] = ContextValue{};
    result.scope[record.name] = RecordValue{};
    return result;
}

/// A field stores no booleans and no infinite or not-a-number reals.
SqlExpression storable(const SqlExpression& value, const Dialect& dialect)
{
    switch (value.type) {
    case ValueType::Boolean:
        return {dialect.as(value, ValueType::Integer), ValueType::Integer};
    case ValueType::Null:
        return {dialect.as(value, ValueType::Real), ValueType::Real};
    case ValueType::Real:
        return {dialect.finiteReal(value.sql), ValueType::Real};
    default:
        return value;
    }
}

} // namespace

SqlExpression compileRecordLambda(const Expression& lambda, const LambdaContext& context)
{
    BodyCompiler compiler(context);
    const RecordLambda record = open(lambda, compiler, context.step);
    return compiler.compile(*record.body, record.scope);
}

SqlExpression compileFieldLambda(const Expression& lambda, const LambdaContext& context,
                                 std::string& field)
{
    BodyCompiler compiler(context);
    const RecordLambda record = open(lambda, compiler, context.step);
    const auto* pair = std::get_if<language::Tuple>(&record.body->value);
    const std::string* name = nullptr;
    if (pair != nullptr && pair->elements.size() == 2)
        name = compiler.constantText(*pair->elements.front(), record.scope);
    if (name == nullptr || name->empty())
        language::failInStep(
            errors::kLambdaForm, context.step, record.body->position,
            "expected a body of a field's name and a value, (\"F\", value), found " +
                kindOf(*record.body));
    field = *name;
    return storable(compiler.compile(*pair->elements.back(), record.scope), context.dialect);
}

} // namespace EmbeddedHV
