#include "EngineException.h"

#include <utility>

namespace EmbeddedHV {

Exception::Exception(std::string message) : _message(std::move(message)) {}
Exception::Exception(const Exception&) = default;
Exception& Exception::operator=(const Exception&) = default;
Exception::~Exception() = default;
const char* Exception::getMessage() const
{
    return _message.c_str();
}

JavaException::JavaException(std::string className, std::string message, std::string trace)
    : _className(std::move(className)), _message(std::move(message)), _trace(std::move(trace))
{
}
JavaException::JavaException(const JavaException&) = default;
JavaException& JavaException::operator=(const JavaException&) = default;
JavaException::~JavaException() = default;
const char* JavaException::getClassName() const
{
    return _className.c_str();
}
const char* JavaException::getMessage() const
{
    return _message.c_str();
}
const char* JavaException::getTrace() const
{
    return _trace.c_str();
}

} // namespace EmbeddedHV
