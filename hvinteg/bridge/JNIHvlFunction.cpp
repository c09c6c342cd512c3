#include "bridge/JNIHvlFunction.h"

#include "bridge/JavaCall.h"

JNIHvlFunction::JNIHvlFunction(jobject object)
{
    init(object, true);
}

JNIHvlFunction::~JNIHvlFunction() = default;

std::string JNIHvlFunction::getId()
{
    return JavaCall(*this, "getId", "()Ljava/lang/String;").callText(getObject());
}

std::string JNIHvlFunction::getName()
{
    return JavaCall(*this, "getName", "()Ljava/lang/String;").callText(getObject());
}
