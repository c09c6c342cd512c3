#include "bridge/JNIJSONBoolean.h"

#include "bridge/JavaCall.h"

JNIJSONBoolean::JNIJSONBoolean()
{
    setClass("java/lang/Boolean");
    handleException(false);
}

JNIJSONBoolean::~JNIJSONBoolean() = default;

bool JNIJSONBoolean::booleanValue(jobject object)
{
    return JavaCall(*this, "booleanValue", "()Z").callBoolean(object);
}
