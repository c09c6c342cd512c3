#pragma once

#include "bridge/JNIHvlFunction.h"

class JNIHvlFragment;

/// A function with the operations that generate its text. They throw JNIException.
class HVINTEG_EXPORT JNIHvlFunctionImpl : public JNIHvlFunction
{
public:
    JNIHvlFunctionImpl(const JNIHvlFunctionImpl&) = default;
    JNIHvlFunctionImpl& operator=(const JNIHvlFunctionImpl&) = default;
    ~JNIHvlFunctionImpl() override;

    /// Generates the definitions that the function needs.
    std::string generateConfiguration();
    /// Generates the call of the function, as part of a fragment.
    std::string generateInvocation(JNIHvlFragment* fragment);

protected:
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNIHvlFunctionImpl(jobject object);

private:
    friend class WrapperFactory;
};
