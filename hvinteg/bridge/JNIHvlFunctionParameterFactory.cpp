#include "bridge/JNIHvlFunctionParameterFactory.h"

#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIHvlFunctionParameter.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "bridge/JavaSignatures.h"
#include "bridge/WrapperFactory.h"

JNIHvlFunctionParameterFactory::JNIHvlFunctionParameterFactory()
{
    setClass(JavaClassNames::ParameterFactory);
    handleException(false);
    const LocalRef<> factory =
        JavaCall::ofStatic(*this, classNamed(JavaClassNames::ParameterFactoryInstance),
                           "getFactory", "()Lcom/vexa/ae/hvlhelpers/HvlFunctionParameter$Factory;",
                           OnFailure::Record)
            .callStaticObject();
    setObjectG(factory.get(), true, true);
    handleException(false);
}

JNIHvlFunctionParameterFactory::JNIHvlFunctionParameterFactory(jobject object)
{
    init(object, true);
}

JNIHvlFunctionParameterFactory::~JNIHvlFunctionParameterFactory() = default;

JNIHvlFunctionParameter*
JNIHvlFunctionParameterFactory::createContainers(std::vector<JNIHvlContainer*>* containers,
                                                 bool named)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createContainers", "(" SIG_LIST "Z)" SIG_PARAMETER)
            .take(JavaCollections::listOf(*this, containers, ListRules::Positional))
            .flag(named)
            .callObject(getObject()));
}

JNIHvlFunctionParameter*
JNIHvlFunctionParameterFactory::createExpression(JNIHvlExpression* expression, bool named)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createExpression", "(" SIG_EXPRESSION "Z)" SIG_PARAMETER)
            .wrapped(expression)
            .flag(named)
            .callObject(getObject()));
}

JNIHvlFunctionParameter* JNIHvlFunctionParameterFactory::createInput(JNIHvlFunction* input)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createInput", "(" SIG_FUNCTION ")" SIG_PARAMETER)
            .wrapped(input)
            .callObject(getObject()));
}

JNIHvlFunctionParameter*
JNIHvlFunctionParameterFactory::createInputs(std::map<std::string, JNIHvlFunction*>* inputs,
                                             bool named)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createInputs", "(" SIG_MAP "Z)" SIG_PARAMETER)
            .take(JavaCollections::mapOf(*this, inputs))
            .flag(named)
            .callObject(getObject()));
}

JNIHvlFunctionParameter* JNIHvlFunctionParameterFactory::createJson(JNIJSONObject* json, bool named)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createJson", "(" SIG_JSON_OBJECT "Z)" SIG_PARAMETER)
            .wrapped(json)
            .flag(named)
            .callObject(getObject()));
}

JNIHvlFunctionParameter* JNIHvlFunctionParameterFactory::createRaw(const std::string& text,
                                                                   bool named)
{
    return WrapperFactory::wrapGlobal<JNIHvlFunctionParameter>(
        JavaCall(*this, "createRaw", "(" SIG_STRING "Z)" SIG_PARAMETER)
            .text(text)
            .flag(named)
            .callObject(getObject()));
}
