#include "bridge/JNIJSONInteger.h"

#include "bridge/JavaCall.h"

JNIJSONInteger::JNIJSONInteger()
{
    setClass("java/lang/Integer");
    handleException(false);
}

JNIJSONInteger::~JNIJSONInteger() = default;

int JNIJSONInteger::intValue(jobject object)
{
    // Looked up where every kind of number has it, not in the class bound.
    return JavaCall(*this, classNamed("java/lang/Number"), "intValue", "()I").callInt(object);
}
