#include "bridge/JNIJSONDouble.h"

#include "bridge/JavaCall.h"

JNIJSONDouble::JNIJSONDouble()
{
    setClass("java/lang/Double");
    handleException(false);
}

JNIJSONDouble::~JNIJSONDouble() = default;

double JNIJSONDouble::doubleValue(jobject object)
{
    // Looked up in java.lang.Number, which all types of numbers derive from.
    return JavaCall(*this, classNamed("java/lang/Number"), "doubleValue", "()D").callDouble(object);
}
