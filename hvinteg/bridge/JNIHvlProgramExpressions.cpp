#include "bridge/JNIHvlFieldDerive.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "bridge/JavaSignatures.h"
#include "bridge/WrapperFactory.h"

// Operations of JNIHvlProgram that create expressions.

namespace {
/// Java has an overload for each type of literal; the signature selects it.
template <class Value>
JNIHvlExpression* literal(JNIHvlProgram& program, const char* signature, Value value)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(program, "createHvlExpressionLiteral", signature)
            .value(value)
            .callObject(program.getObject()));
}
} // namespace

JNIHvlExpression* JNIHvlProgram::createHvlExpression(const std::string& pattern,
                                                     std::vector<JNIHvlExpression*>* arguments)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpression", "(" SIG_STRING "[" SIG_EXPRESSION ")" SIG_EXPRESSION)
            .text(pattern)
            .take(JavaCollections::arrayOf(*this, JavaClassNames::Expression, arguments))
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionConditional(
    std::vector<HvlExpressionConditional::Clause*>* clauses, JNIHvlExpression* otherwise)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionConditional",
                 "(" SIG_LIST SIG_EXPRESSION ")" SIG_EXPRESSION)
            .take(JavaCollections::listOf(*this, clauses, ListRules::Signatures))
            .wrapped(otherwise)
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionFieldReference(const std::string& record,
                                                                   const std::string& field)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionFieldReference",
                 "(" SIG_STRING SIG_STRING ")" SIG_EXPRESSION)
            .text(record)
            .text(field)
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionFieldReference(const std::string& field)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionFieldReference", "(" SIG_STRING ")" SIG_EXPRESSION)
            .text(field)
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLambdaFunction(
    std::vector<JNIHvlExpression::LambdaSignature*>* parameters, JNIHvlExpression* body)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionLambdaFunction",
                 "(" SIG_LIST SIG_EXPRESSION ")" SIG_EXPRESSION)
            .take(JavaCollections::listOf(*this, parameters, ListRules::Signatures))
            .wrapped(body)
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionList(std::vector<JNIHvlExpression*>* items)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionList", "(" SIG_LIST ")" SIG_EXPRESSION)
            .take(JavaCollections::listOf(*this, items, ListRules::Items))
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLiteral(int value)
{
    return literal(*this, "(Ljava/lang/Integer;)" SIG_EXPRESSION, value);
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLiteral(double value)
{
    return literal(*this, "(Ljava/lang/Double;)" SIG_EXPRESSION, value);
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLiteral(const char* value)
{
    return literal(*this, "(Ljava/lang/String;)" SIG_EXPRESSION, value);
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLiteral(long long value)
{
    return literal(*this, "(Ljava/lang/Long;)" SIG_EXPRESSION, value);
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionLiteral(bool value)
{
    return literal(*this, "(Ljava/lang/Boolean;)" SIG_EXPRESSION, value);
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionNullValue()
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionNullValue", "()" SIG_EXPRESSION)
            .callObject(getObject()));
}

JNIHvlExpression* JNIHvlProgram::createHvlExpressionParameterName(const std::string& name)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionParameterName", "(" SIG_STRING ")" SIG_EXPRESSION)
            .text(name)
            .callObject(getObject()));
}

JNIHvlExpression*
JNIHvlProgram::createHvlExpressionTuple(std::vector<JNIHvlExpression*>* components)
{
    return WrapperFactory::wrapLocal<JNIHvlExpression>(
        JavaCall(*this, "createHvlExpressionTuple", "(" SIG_LIST ")" SIG_EXPRESSION)
            .take(JavaCollections::listOf(*this, components, ListRules::Components))
            .callObject(getObject()));
}

JNIHvlFieldDerive* JNIHvlProgram::createHvlFieldDerive(const std::string& field,
                                                       JNIHvlExpression* value)
{
    return WrapperFactory::wrapLocal<JNIHvlFieldDerive>(
        JavaCall(*this, "createHvlFieldDerive", "(" SIG_STRING SIG_EXPRESSION ")" SIG_FIELD_DERIVE)
            .text(field)
            .wrapped(value)
            .callObject(getObject()));
}
