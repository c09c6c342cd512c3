#include "bridge/JNITaggedFunctionInput.h"

#include "bridge/JNIHvlFunctionImpl.h"
#include "bridge/JavaCall.h"
#include "bridge/WrapperFactory.h"

JNITaggedFunctionInput::JNITaggedFunctionInput(jobject object)
{
    init(object, true);
}

JNITaggedFunctionInput::~JNITaggedFunctionInput() = default;

JNIHvlFunctionImpl& JNITaggedFunctionInput::getFunction()
{
    if (_function == nullptr)
        _function = WrapperFactory::wrapGlobal<JNIHvlFunctionImpl>(
            JavaCall(*this, "getFunction", "()Lcom/vexa/ae/hvlhelpers/impl/HvlFunctionImpl;")
                .callObject(getObject()));
    return *_function;
}

const std::string& JNITaggedFunctionInput::getTag()
{
    if (_tag.empty())
        _tag = JavaCall(*this, "getTag", "()Ljava/lang/String;").callText(getObject());
    return _tag;
}
