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

// Operations of JNIHvlProgram that create functions.

namespace {
// Overloads that pass an argument to Java. The C++ type determines the conversion.

void pass(JavaCall& call, JNIHvlProgram&, const std::string& text)
{
    call.text(text);
}

void pass(JavaCall& call, JNIHvlProgram&, const JNIHvlAccessor* wrapper)
{
    call.wrapped(wrapper);
}

void pass(JavaCall& call, JNIHvlProgram& program, std::vector<JNIJSONObject*>* configurations)
{
    call.take(JavaCollections::listOf(program, configurations, ListRules::Positional));
}

void pass(JavaCall& call, JNIHvlProgram& program, std::vector<JNIHvlContainer*>* containers)
{
    call.take(JavaCollections::listOf(program, containers, ListRules::Containers));
}

void pass(JavaCall& call, JNIHvlProgram& program, std::map<std::string, JNIHvlFunction*>* inputs)
{
    call.take(JavaCollections::mapOf(program, inputs));
}

void pass(JavaCall& call, JNIHvlProgram& program, JNIHvlProgram::TypeMap* types)
{
    call.take(JavaCollections::typeMap(program, types));
}

void pass(JavaCall& call, JNIHvlProgram& program, std::vector<JNIHvlFunctionParameter*>* parameters)
{
    call.take(JavaCollections::arrayOf(program, JavaClassNames::Parameter, parameters));
}

void pass(JavaCall& call, JNIHvlProgram& program, const std::vector<std::string>* texts)
{
    call.take(JavaCollections::stringArray(program, texts));
}

/// Calls a factory method of the program with the arguments.
template <class... Arguments>
JNIHvlFunction* create(JNIHvlProgram& program, const char* method, const char* signature,
                       const Arguments&... arguments)
{
    JavaCall call(program, method, signature);
    (pass(call, program, arguments), ...);
    return WrapperFactory::wrapGlobal<JNIHvlFunction>(call.callObject(program.getObject()));
}
} // namespace

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 std::vector<JNIJSONObject*>* configurations,
                                                 JNIHvlFunction* input)
{
    return create(*this, "createHvlFunction", "(" SIG_STRING SIG_LIST SIG_FUNCTION ")" SIG_FUNCTION,
                  name, configurations, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration)
{
    return create(*this, "createHvlFunction", "(" SIG_STRING SIG_JSON_OBJECT ")" SIG_FUNCTION, name,
                  configuration);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFunction* input)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_FUNCTION ")" SIG_FUNCTION, name, configuration,
                  input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 std::map<std::string, JNIHvlFunction*>* inputs)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_MAP ")" SIG_FUNCTION, name, configuration,
                  inputs);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 std::vector<JNIHvlContainer*>* inputs,
                                                 std::vector<JNIHvlContainer*>* outputs,
                                                 JNIHvlFunction* input)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_LIST SIG_LIST SIG_FUNCTION ")" SIG_FUNCTION,
                  name, configuration, inputs, outputs, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlExpression* expression,
                                                 JNIHvlFunction* input)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_EXPRESSION SIG_FUNCTION ")" SIG_FUNCTION, name,
                  configuration, expression, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFieldDerive* derive, JNIHvlFunction* input)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_FIELD_DERIVE SIG_FUNCTION ")" SIG_FUNCTION,
                  name, configuration, derive, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunction(const std::string& name,
                                                 JNIJSONObject* configuration,
                                                 JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                                 TypeMap* types)
{
    return create(*this, "createHvlFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_FIELD_DERIVE SIG_FUNCTION SIG_MAP
                  ")" SIG_FUNCTION,
                  name, configuration, derive, input, types);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive,
                                                             JNIHvlFunction* input)
{
    return create(*this, "createHvlFunctionDeriveFields",
                  "(" SIG_FIELD_DERIVE SIG_FUNCTION ")" SIG_FUNCTION, derive, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive,
                                                             JNIHvlFunction* input, TypeMap* types)
{
    return create(*this, "createHvlFunctionDeriveFields",
                  "(" SIG_FIELD_DERIVE SIG_FUNCTION SIG_MAP ")" SIG_FUNCTION, derive, input, types);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                              JNIHvlFunction* input)
{
    return create(*this, "createHvlFunctionFilterRecords",
                  "(" SIG_EXPRESSION SIG_FUNCTION ")" SIG_FUNCTION, condition, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                              JNIHvlFunction* input, TypeMap* types)
{
    return create(*this, "createHvlFunctionFilterRecords",
                  "(" SIG_EXPRESSION SIG_FUNCTION SIG_MAP ")" SIG_FUNCTION, condition, input,
                  types);
}

JNIHvlFunction*
JNIHvlProgram::createHvlFunctionGeneral(const std::string& name,
                                        std::vector<JNIHvlFunctionParameter*>* parameters)
{
    return create(*this, "createHvlFunctionGeneral",
                  "(" SIG_STRING "[" SIG_PARAMETER ")" SIG_FUNCTION, name, parameters);
}

JNIHvlFunction* JNIHvlProgram::createHvlFunctionGeneral(const std::string& name,
                                                        JNIJSONObject* configuration,
                                                        const std::vector<std::string>* arguments,
                                                        JNIHvlFunction* input)
{
    return create(*this, "createHvlFunctionGeneral",
                  "(" SIG_STRING SIG_JSON_OBJECT "[" SIG_STRING SIG_FUNCTION ")" SIG_FUNCTION, name,
                  configuration, arguments, input);
}

JNIHvlFunction* JNIHvlProgram::createHvlMetaFunction(const std::string& name,
                                                     JNIJSONObject* configuration,
                                                     JNIHvlFunction* operand, JNIHvlFunction* input)
{
    return create(*this, "createHvlMetaFunction",
                  "(" SIG_STRING SIG_JSON_OBJECT SIG_FUNCTION SIG_FUNCTION ")" SIG_FUNCTION, name,
                  configuration, operand, input);
}
