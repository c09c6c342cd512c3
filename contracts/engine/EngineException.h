#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// The engine could not do what it was asked to do. A job that fails does not throw. It reports
/// through ExecutionListener::onError.
class ENGINE_API Exception
{
public:
    /// `message` is one sentence, UTF-8, that says what the engine could not do.
    explicit Exception(std::string message);
    /// Copies the text.
    Exception(const Exception&);
    /// Copies the text.
    Exception& operator=(const Exception&);

    virtual ~Exception();
    /// One sentence, UTF-8. The exception owns the text.
    virtual const char* getMessage() const;

private:
    std::string _message;
};

/// A Java exception that reached the engine's interface. The class does not derive from Exception:
/// a caller that handles both has a catch clause for each.
class ENGINE_API JavaException
{
public:
    /// `className` is the binary name of the Java class, `trace` its stack trace. All are UTF-8.
    JavaException(std::string className, std::string message, std::string trace);
    /// Copies the texts.
    JavaException(const JavaException&);
    /// Copies the texts.
    JavaException& operator=(const JavaException&);

    virtual ~JavaException();
    /// The binary name of the Java class, for example java.lang.IllegalArgumentException. The
    /// exception owns the text.
    virtual const char* getClassName() const;
    /// The message of the Java exception, UTF-8. The exception owns the text.
    virtual const char* getMessage() const;
    /// The Java stack trace, UTF-8, one frame on each line. The exception owns the text.
    virtual const char* getTrace() const;

private:
    std::string _className;
    std::string _message;
    std::string _trace;
};

} // namespace EmbeddedHV
