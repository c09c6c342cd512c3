#pragma once

#include <map>

#include "bridge/JNIHvlAccessor.h"

class JNIHvlContainer;
class JNIHvlExpression;
class JNIHvlFunction;
class JNIHvlFunctionParameter;
class JNIJSONObject;

/// Makes the arguments of a general function. Each result is deleted by cleanJRef. Operations throw
/// JNIException; a failure of the constructor is recorded, and nothing is wrapped.
///
/// `named` tells how the argument is written: by a definition of its own, or in place; for inputs,
/// by their tags, or by position.
class HVINTEG_EXPORT JNIHvlFunctionParameterFactory : public JNIHvlAccessor
{
public:
    JNIHvlFunctionParameterFactory();
    JNIHvlFunctionParameterFactory(const JNIHvlFunctionParameterFactory&) = default;
    JNIHvlFunctionParameterFactory& operator=(const JNIHvlFunctionParameterFactory&) = default;
    ~JNIHvlFunctionParameterFactory() override;

    JNIHvlFunctionParameter* createContainers(std::vector<JNIHvlContainer*>* containers,
                                              bool named);
    /// An expression; a function whose records come in.
    JNIHvlFunctionParameter* createExpression(JNIHvlExpression* expression, bool named);
    JNIHvlFunctionParameter* createInput(JNIHvlFunction* input);
    /// Functions by tag; one that is null is left out.
    JNIHvlFunctionParameter* createInputs(std::map<std::string, JNIHvlFunction*>* inputs,
                                          bool named);
    JNIHvlFunctionParameter* createJson(JNIJSONObject* json, bool named);
    JNIHvlFunctionParameter* createRaw(const std::string& text, bool named);

protected:
    explicit JNIHvlFunctionParameterFactory(jobject object);
};
