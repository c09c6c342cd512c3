#pragma once

#include <exception>
#include <string>

#include "HostExport.h"

/// A Java exception in C++.
class HOST_API JNIException : public std::exception
{
public:
    /// Takes what the accessors return.
    JNIException(std::string className, std::string message, std::string trace);
    ~JNIException() override;
    /// The message, UTF-8. The exception owns the text.
    const char* what() const noexcept override { return _message.c_str(); }
    /// The binary name of the exception's Java class.
    const std::string& className() const { return _className; }
    /// Its message; the class name if it has none.
    const std::string& message() const { return _message; }
    /// The Java stack trace.
    const std::string& trace() const { return _trace; }

private:
    std::string _className;
    std::string _message;
    std::string _trace;
};
