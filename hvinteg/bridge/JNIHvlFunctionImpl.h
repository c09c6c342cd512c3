#pragma once

#include "bridge/JNIHvlFunction.h"

class JNIHvlFragment;

/// A function as the renderer sees it. Operations throw JNIException.
class HVINTEG_EXPORT JNIHvlFunctionImpl : public JNIHvlFunction
{
public:
    JNIHvlFunctionImpl(const JNIHvlFunctionImpl&) = default;
    JNIHvlFunctionImpl& operator=(const JNIHvlFunctionImpl&) = default;
    ~JNIHvlFunctionImpl() override;

    /// The definitions that the function needs.
    std::string generateConfiguration();
    /// The call of the function, as part of a fragment.
    std::string generateInvocation(JNIHvlFragment* fragment);

protected:
    explicit JNIHvlFunctionImpl(jobject object);

private:
    friend class WrapperFactory;
};
