#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFieldDerive.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIHvlFunctionParameter.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "bridge/JavaSignatures.h"
#include "bridge/WrapperFactory.h"

// The operations of JNIHvlProgram that make functions.

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 std::vector<JNIJSONObject*>* configurations,
                                                 JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction", "(" SIG_STRING SIG_LIST SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .take(JavaCollections::listOf(*this, configurations, ListRules::Positional))
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction", "(" SIG_STRING SIG_JSON_OBJECT ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 std::map<std::string, JNIHvlFunction*>* inputs)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_MAP ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .take(JavaCollections::mapOf(*this, inputs))
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 std::vector<JNIHvlContainer*>* inputs,
                                                 std::vector<JNIHvlContainer*>* outputs,
                                                 JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_LIST SIG_LIST SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .take(JavaCollections::listOf(*this, inputs, ListRules::Containers))
            .take(JavaCollections::listOf(*this, outputs, ListRules::Containers))
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlExpression* expression,
                                                 JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_EXPRESSION SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .wrapped(expression)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFieldDerive* derive, JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_FIELD_DERIVE SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .wrapped(derive)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                                 TypeMap* types)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_FIELD_DERIVE SIG_FUNCTION SIG_MAP
                 ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .wrapped(derive)
            .wrapped(input)
            .take(JavaCollections::typeMap(*this, types))
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive,
                                                             JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionDeriveFields",
                 "(" SIG_FIELD_DERIVE SIG_FUNCTION ")" SIG_FUNCTION)
            .wrapped(derive)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive,
                                                             JNIHvlFunction* input, TypeMap* types)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionDeriveFields",
                 "(" SIG_FIELD_DERIVE SIG_FUNCTION SIG_MAP ")" SIG_FUNCTION)
            .wrapped(derive)
            .wrapped(input)
            .take(JavaCollections::typeMap(*this, types))
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                              JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionFilterRecords",
                 "(" SIG_EXPRESSION SIG_FUNCTION ")" SIG_FUNCTION)
            .wrapped(condition)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                              JNIHvlFunction* input, TypeMap* types)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionFilterRecords",
                 "(" SIG_EXPRESSION SIG_FUNCTION SIG_MAP ")" SIG_FUNCTION)
            .wrapped(condition)
            .wrapped(input)
            .take(JavaCollections::typeMap(*this, types))
            .callObject(getObject()));
}

JNIHvlFunction*
JNIHvlProgram::createHvlFunctionGeneral(const std::string& name,
                                        std::vector<JNIHvlFunctionParameter*>* parameters)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionGeneral",
                 "(" SIG_STRING "[" SIG_PARAMETER ")" SIG_FUNCTION)
            .text(name)
            .take(JavaCollections::arrayOf(*this, JavaClassNames::Parameter, parameters))
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionGeneral(const std::string& name,
                                                        JNIJSONObject* configuration,
                                                        const std::vector<std::string>* arguments,
                                                        JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlFunctionGeneral",
                 "(" SIG_STRING SIG_JSON_OBJECT "[" SIG_STRING SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .take(JavaCollections::stringArray(*this, arguments))
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunction* JNIHvlProgram::createHvlMetaFunction(const std::string& name,
                                                     JNIJSONObject* configuration,
                                                     JNIHvlFunction* operand, JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(
        JavaCall(*this, "createHvlMetaFunction",
                 "(" SIG_STRING SIG_JSON_OBJECT SIG_FUNCTION SIG_FUNCTION ")" SIG_FUNCTION)
            .text(name)
            .wrapped(configuration)
            .wrapped(operand)
            .wrapped(input)
            .callObject(getObject()));
}
