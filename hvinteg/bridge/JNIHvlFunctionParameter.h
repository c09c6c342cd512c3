#pragma once

#include "bridge/JNIHvlAccessor.h"

/// One argument of a general function. JNIHvlFunctionParameterFactory creates it. Pass it to
/// JNIHvlProgram::createHvlFunctionGeneral.
class HVINTEG_EXPORT JNIHvlFunctionParameter : public JNIHvlAccessor
{
public:
    JNIHvlFunctionParameter(const JNIHvlFunctionParameter&) = default;
    JNIHvlFunctionParameter& operator=(const JNIHvlFunctionParameter&) = default;
    ~JNIHvlFunctionParameter() override;

protected:
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNIHvlFunctionParameter(jobject object);

private:
    friend class WrapperFactory;
};
