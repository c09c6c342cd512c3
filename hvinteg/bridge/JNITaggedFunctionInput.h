#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlFunctionImpl;

/// An input of a function and its tag. Operations throw JNIException.
class HVINTEG_EXPORT JNITaggedFunctionInput : public JNIHvlAccessor
{
public:
    JNITaggedFunctionInput(const JNITaggedFunctionInput&) = default;
    JNITaggedFunctionInput& operator=(const JNITaggedFunctionInput&) = default;
    ~JNITaggedFunctionInput() override;

    /// The function that feeds the input. cleanJRef deletes it.
    JNIHvlFunctionImpl& getFunction();
    /// The tag; empty if the input has none. The reference is valid as long as this object.
    const std::string& getTag();

protected:
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNITaggedFunctionInput(jobject object);

private:
    friend class WrapperFactory;

    JNIHvlFunctionImpl* _function = nullptr;
    std::string _tag;
};
