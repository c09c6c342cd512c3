#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlFunctionImpl;

/// An input of a function, with the tag under which the function takes it. Operations throw
/// JNIException.
class HVINTEG_EXPORT JNITaggedFunctionInput : public JNIHvlAccessor
{
public:
    JNITaggedFunctionInput(const JNITaggedFunctionInput&) = default;
    JNITaggedFunctionInput& operator=(const JNITaggedFunctionInput&) = default;
    ~JNITaggedFunctionInput() override;

    /// The function that feeds the input: fetched once, deleted by cleanJRef.
    JNIHvlFunctionImpl& getFunction();
    /// Empty for an input without a tag; fetched until it is not empty.
    const std::string& getTag();

protected:
    explicit JNITaggedFunctionInput(jobject object);

private:
    friend class WrapperFactory;

    JNIHvlFunctionImpl* _function = nullptr;
    std::string _tag;
};
