#pragma once

#include <jni.h>

#include <cstdint>
#include <string>

#include "HostExport.h"

/// Base of C++ objects that represent a Java object. It holds one environment, class, method id and
/// object, so it makes one call at a time, on the thread of its environment.
///
/// Classes that are found by name are cached for the process as global references. A class taken
/// from an object is a local reference of this accessor. The object is not owned: the caller that
/// sets it keeps it alive.
class HOST_API JNIAccessor
{
public:
    /// Uses this environment, on the calling thread.
    explicit JNIAccessor(JNIEnv* env);
    /// Shares the object; keeps its own reference to the class.
    JNIAccessor(const JNIAccessor& other);
    /// Shares the object of `other` instead; keeps its own reference to the class.
    JNIAccessor& operator=(const JNIAccessor& other);
    virtual ~JNIAccessor();

    /// Uses another environment, on the calling thread.
    void setEnv(JNIEnv* env);
    /// The environment in use.
    JNIEnv* getEnv() const { return _env; }
    /// Finds a class by its JNI name without changing the kept class. The reference is valid on any
    /// thread until the process ends. Returns null with an exception pending if there is no such
    /// class.
    jclass classNamed(const char* name);
    /// Finds a class by its JNI name and keeps it. Returns null with an exception pending if there
    /// is no such class.
    jclass setClass(const char* name);
    /// Keeps the class of an object; no class for null.
    jclass setClassOf(jobject object);
    /// Looks up a method of the kept class and keeps its id. Returns null with an exception pending
    /// if there is no such method.
    jmethodID setMethod(const char* name, const char* signature);
    /// Looks up a static method of the kept class and keeps its id. Returns null with an exception
    /// pending if there is no such method.
    jmethodID setStaticMethod(const char* name, const char* signature);
    /// The kept class, or null.
    jclass getClass() const { return _class; }
    /// The kept method id, or null.
    jmethodID getMethodID() const { return _method; }
    /// The object, or null.
    jobject getObject() const { return _object; }
    /// Sets the object. It is not owned.
    void setObject(jobject object) { _object = object; }

    /// Clears a pending Java exception and throws it as JNIException.
    void exceptionCheck();
    /// Clears a Java exception and records its text for getErrorMessage. With `rethrow` also throws
    /// JNIException. A null `exception` means the pending one. Does nothing without an exception.
    void handleException(bool rethrow, jthrowable exception = nullptr);
    /// The text of the last recorded exception; empty for none.
    const std::string& getErrorMessage() const { return _errorMessage; }

    /// Creates a Java string from UTF-8 text; invalid bytes become U+FFFD. The caller owns the
    /// local reference. Returns null with an exception pending if memory is exhausted.
    jstring ToJString(const std::string& text);
    /// Converts a Java string to UTF-8 or to the named Java charset. Returns an empty text for
    /// null, and with an exception pending if the charset does not exist or memory is exhausted.
    std::string FromJString(jstring text, const char* charset = nullptr);

    /// Whether the calling thread is the one on which the environment was set and has stayed
    /// attached since. If not, local references must not be used.
    bool onOwnThread() const;

private:
    void releaseClass();
    std::string bytesInCharset(jstring text, const char* charset);

    JNIEnv* _env;
    std::uint64_t _attachment; ///< attachment of the thread on which the environment was set
    jclass _class = nullptr;
    jmethodID _method = nullptr;
    jobject _object = nullptr;
    std::string _errorMessage;
    bool _ownsClass = false;
};
