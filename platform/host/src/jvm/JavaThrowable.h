#pragma once

#include <jni.h>

#include <string>

/// The description of a Java exception. Its texts come from the exception's own Java methods, which
/// may fail, for example without memory. The text is then empty, and no exception is pending.
struct JavaThrowable
{
    std::string className;
    std::string message; ///< the class name if the exception has none
    std::string trace;

    /// No exception may be pending. The trace is long and only read if requested.
    static JavaThrowable describe(JNIEnv* env, jthrowable exception, bool withTrace);
};
