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
    // Looked up in java.lang.Number, which all types of numbers derive from.
    return JavaCall(*this, classNamed("java/lang/Number"), "intValue", "()I").callInt(object);
}
