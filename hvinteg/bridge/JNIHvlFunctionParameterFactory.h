#pragma once

#include <map>

#include "bridge/JNIHvlAccessor.h"

class JNIHvlContainer;
class JNIHvlExpression;
class JNIHvlFunction;
class JNIHvlFunctionParameter;
class JNIJSONObject;

/// Creates arguments of a general function. cleanJRef deletes the results. Pointer arguments are
/// borrowed for the call. Operations throw JNIException. If the constructor fails, the error is
/// recorded and nothing is wrapped.
///
/// With `named` an argument is written by a separate definition, and inputs are written with their
/// tags. Without, an argument is written in place and inputs by position.
class HVINTEG_EXPORT JNIHvlFunctionParameterFactory : public JNIHvlAccessor
{
public:
    /// Gets the factory object from Java.
    JNIHvlFunctionParameterFactory();
    JNIHvlFunctionParameterFactory(const JNIHvlFunctionParameterFactory&) = default;
    JNIHvlFunctionParameterFactory& operator=(const JNIHvlFunctionParameterFactory&) = default;
    ~JNIHvlFunctionParameterFactory() override;

    /// A list of containers; a null element is passed as a Java null.
    JNIHvlFunctionParameter* createContainers(std::vector<JNIHvlContainer*>* containers,
                                              bool named);
    /// An expression.
    JNIHvlFunctionParameter* createExpression(JNIHvlExpression* expression, bool named);
    /// A function whose records are an input.
    JNIHvlFunctionParameter* createInput(JNIHvlFunction* input);
    /// Functions by tag; null functions are left out.
    JNIHvlFunctionParameter* createInputs(std::map<std::string, JNIHvlFunction*>* inputs,
                                          bool named);
    /// A JSON configuration.
    JNIHvlFunctionParameter* createJson(JNIJSONObject* json, bool named);
    /// Text of the job language, used unchanged.
    JNIHvlFunctionParameter* createRaw(const std::string& text, bool named);

protected:
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNIHvlFunctionParameterFactory(jobject object);
};
