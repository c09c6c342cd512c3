#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// The engine could not do what was asked. A job that merely fails does not throw: it reports
/// through ExecutionListener::onError.
class ENGINE_API Exception
{
public:
    /// A sentence that names what could not be done.
    explicit Exception(std::string message);
    Exception(const Exception&);
    Exception& operator=(const Exception&);

    virtual ~Exception();
    /// One sentence, UTF-8.
    virtual const char* getMessage() const;

private:
    std::string _message;
};

/// A Java exception reached the engine's edge. It is no Exception: a caller that wants both catches
/// both, this one first.
class ENGINE_API JavaException
{
public:
    JavaException(std::string className, std::string message, std::string trace);
    JavaException(const JavaException&);
    JavaException& operator=(const JavaException&);

    virtual ~JavaException();
    /// The binary name of the Java class, as in java.lang.IllegalArgumentException.
    virtual const char* getClassName() const;
    /// The message of the Java exception, UTF-8.
    virtual const char* getMessage() const;
    /// The Java stack trace, one frame a line, UTF-8.
    virtual const char* getTrace() const;

private:
    std::string _className;
    std::string _message;
    std::string _trace;
};

} // namespace EmbeddedHV
