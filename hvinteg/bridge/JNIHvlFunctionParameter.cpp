#include "bridge/JNIHvlFunctionParameter.h"

JNIHvlFunctionParameter::JNIHvlFunctionParameter(jobject object)
{
    init(object, true);
}

JNIHvlFunctionParameter::~JNIHvlFunctionParameter() = default;
