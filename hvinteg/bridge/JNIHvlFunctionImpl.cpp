#include "bridge/JNIHvlFunctionImpl.h"

#include "bridge/JNIHvlFragment.h"
#include "bridge/JavaCall.h"

JNIHvlFunctionImpl::JNIHvlFunctionImpl(jobject object) : JNIHvlFunction(object) {}

JNIHvlFunctionImpl::~JNIHvlFunctionImpl() = default;

std::string JNIHvlFunctionImpl::generateConfiguration()
{
    return JavaCall(*this, "generateConfiguration", "()Ljava/lang/String;").callText(getObject());
}

std::string JNIHvlFunctionImpl::generateInvocation(JNIHvlFragment* fragment)
{
    return JavaCall(*this, "generateInvocation",
                    "(Lcom/vexa/ae/hvlhelpers/HvlFragment;)Ljava/lang/String;")
        .wrapped(fragment)
        .callText(getObject());
}
