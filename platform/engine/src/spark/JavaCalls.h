#pragma once

#include <jni.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace EmbeddedHV {

/// A Java exception that the cluster's client does not declare, for example for a class that is
/// missing. The text has its class.
class JavaFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The calling thread's attachment to the Java virtual machine, and a frame for local references,
/// which end with the object. Detaches the thread only if the constructor attached it. Not copied,
/// one thread.
class JavaScope
{
public:
    /// Throws JavaFailure.
    explicit JavaScope(JavaVM* machine);
    JavaScope(const JavaScope&) = delete;
    JavaScope& operator=(const JavaScope&) = delete;
    ~JavaScope();

    JNIEnv* env() const { return _env; }

    /// A Java text. The UTF-8 may contain any character.
    jstring text(const std::string& utf8) const;
    /// A list of Java texts.
    jobjectArray texts(const std::vector<std::string>& utf8) const;
    /// A Java text in UTF-8; empty for null.
    std::string utf8(jobject text) const;

private:
    JavaVM* _machine;
    JNIEnv* _env = nullptr;
    bool _isAttachedHere = false;
};

/// A global reference.
class JavaObject
{
public:
    JavaObject() = default;
    /// `object` is a local reference of the scope, or null.
    JavaObject(JavaVM* machine, const JavaScope& scope, jobject object);
    JavaObject(JavaObject&& other) noexcept;
    JavaObject& operator=(JavaObject&& other) noexcept;
    ~JavaObject();

    jobject get() const { return _object; }
    explicit operator bool() const { return _object != nullptr; }

private:
    JavaVM* _machine = nullptr;
    jobject _object = nullptr;
};

/// Clears the pending exception and returns its class and message. Empty without an exception.
std::string takeJavaException(const JavaScope& scope);
/// Throws JavaFailure if an exception is pending.
void throwJavaException(const JavaScope& scope);

} // namespace EmbeddedHV
