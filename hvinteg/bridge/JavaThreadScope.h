#pragma once

#include <jni.h>

/// Attaches the calling thread to the Java virtual machine for its scope, starting the machine if
/// there is none. For a thread that makes one call and must leave no trace: it does not touch the
/// environment that the object manager keeps. Throws what the attachment throws.
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
