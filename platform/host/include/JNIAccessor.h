#pragma once

#include <jni.h>

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
    explicit JNIAccessor(JNIEnv* env);
    JNIAccessor(const JNIAccessor& other);
    JNIAccessor& operator=(const JNIAccessor& other);
    virtual ~JNIAccessor();

    void setEnv(JNIEnv* env);
    JNIEnv* getEnv() const { return _env; }
    /// Finds the class by its JNI name; null with an exception pending if there is none.
    jclass setClass(const char* name);
    /// Takes the class of an object.
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

    /// A string from a Java string, in a Java charset, or in the bytes that JNI gives for null.
    std::string FromJString(jstring text, const char* charset = nullptr);

    /// Whether the calling thread is the one that the environment belongs to. Where it is not, no
    /// reference may be touched.
    bool onOwnThread() const;

private:
    void releaseClass();

    JNIEnv* _env;
    jclass _class = nullptr;
    jmethodID _method = nullptr;
    jobject _object = nullptr;
    std::string _errorMessage;
    bool _ownsClass = false;
};
