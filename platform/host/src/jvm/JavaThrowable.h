#pragma once

#include <jni.h>

#include <string>

/// What can be told of a Java exception. Each text is asked of the exception's own Java methods,
/// which may fail in their turn, as after a lack of memory: then the text is empty, and nothing is
/// left pending.
struct JavaThrowable
{
    std::string className;
    std::string message; ///< the class name where the exception has none
    std::string trace;

    /// No exception may be pending. The trace is left out unless asked for, since it is long.
    static JavaThrowable describe(JNIEnv* env, jthrowable exception, bool withTrace);
};
