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
    // Looked up where every kind of number has it, not in the class bound.
    return JavaCall(*this, classNamed("java/lang/Number"), "doubleValue", "()D").callDouble(object);
}
