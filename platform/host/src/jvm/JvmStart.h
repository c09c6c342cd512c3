#pragma once

#include <jni.h>

#include <optional>
#include <string>
#include <vector>

#include "JvmLibrary.h"

/// Creates the machine on a separate thread.
///
/// A machine that fails to start may end the process from the thread that creates it. The abort
/// hook blocks that thread forever instead: the process continues, and the caller gets the failure.
class JvmStart
{
public:
    /// The result of a start.
    struct Outcome
    {
        std::optional<jint> result; ///< of JNI_CreateJavaVM; none if the machine aborted
        JavaVM* machine = nullptr;
    };

    /// Leaves no thread attached. The strings of the options must be in `texts` or live forever.
    /// Throws std::system_error if no thread can be created.
    static Outcome create(const JvmLibrary& library, std::vector<JavaVMOption> options,
                          std::vector<std::string> texts);

    /// Called by the abort hook. Does not return on a thread that creates a machine; does nothing
    /// on others.
    static void giveUp();
    /// Whether the calling thread is creating a machine.
    static bool isUnderWay();
};
