#pragma once

#include <jni.h>

#include <cstdint>
#include <string>

#include "HostExport.h"

/// Base of every C++ object that stands for a Java object. It keeps one environment, one class, one
/// method id and one object, so it runs one call at a time, on the thread of its environment.
///
/// Classes found by name are kept for the life of the process, in one cache of global references; a
/// class taken from an object is a local reference of this accessor. The object is not the
/// accessor's: whoever set it keeps it alive.
class HOST_API JNIAccessor
{
public:
    /// Works in this environment, on its thread.
    explicit JNIAccessor(JNIEnv* env);
    JNIAccessor(const JNIAccessor& other);
    JNIAccessor& operator=(const JNIAccessor& other);
    virtual ~JNIAccessor();

    void setEnv(JNIEnv* env);
    JNIEnv* getEnv() const { return _env; }
    /// A class by its JNI name, for any thread and for good; null with an exception pending if
    /// there is none. The kept class stays as it is.
    jclass classNamed(const char* name);
    /// Finds the class by its JNI name; null with an exception pending if there is none.
    jclass setClass(const char* name);
    /// Takes the class of an object; none for a null object.
    jclass setClassOf(jobject object);
    /// Looks a method up in the kept class.
    jmethodID setMethod(const char* name, const char* signature);
    jmethodID setStaticMethod(const char* name, const char* signature);
    jclass getClass() const { return _class; }
    jmethodID getMethodID() const { return _method; }
    jobject getObject() const { return _object; }
    void setObject(jobject object) { _object = object; }

    /// If a Java exception is pending, clears it and throws JNIException.
    void exceptionCheck();
    /// Takes a pending exception out of the machine and records its text for getErrorMessage. With
    /// `rethrow` it then throws JNIException. A null exception stands for the pending one; without
    /// any, nothing happens.
    void handleException(bool rethrow, jthrowable exception = nullptr);
    const std::string& getErrorMessage() const { return _errorMessage; }

    /// A new Java string from UTF-8 text, a local reference of the caller's; null with an exception
    /// pending if there is no memory for it. U+FFFD stands for bytes that are not UTF-8.
    jstring ToJString(const std::string& text);
    /// A string from a Java string: UTF-8, or in the Java charset named. Empty for a null text;
    /// also with an exception pending, for a charset that does not exist or for lack of memory.
    std::string FromJString(jstring text, const char* charset = nullptr);

    /// Whether the calling thread is the one that the environment was set on, and still attached as
    /// it was then. Where it is not, no local reference may be touched.
    bool onOwnThread() const;

private:
    void releaseClass();
    std::string bytesInCharset(jstring text, const char* charset);

    JNIEnv* _env;
    std::uint64_t _attachment; ///< of the thread on which the environment was set
    jclass _class = nullptr;
    jmethodID _method = nullptr;
    jobject _object = nullptr;
    std::string _errorMessage;
    bool _ownsClass = false;
};
