#include "JNIException.h"

JNIException::JNIException(std::string className, std::string message, std::string trace)
    : _className(std::move(className)), _message(std::move(message)), _trace(std::move(trace))
{
}

JNIException::~JNIException() = default;
