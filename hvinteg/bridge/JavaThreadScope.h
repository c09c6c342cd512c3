#pragma once

#include <jni.h>

/// Attaches the calling thread to the Java virtual machine for a scope, and starts the machine if
/// necessary. For threads that make a single call: the environment of the object manager is
/// unchanged. Throws what the attachment throws.
class JavaThreadScope
{
public:
    JavaThreadScope();
    ~JavaThreadScope();
    JavaThreadScope(const JavaThreadScope&) = delete;
    JavaThreadScope& operator=(const JavaThreadScope&) = delete;

    JNIEnv* env() const { return _env; }

private:
    JNIEnv* _env = nullptr;
};
