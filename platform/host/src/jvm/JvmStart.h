#pragma once

#include <jni.h>

#include <optional>
#include <string>
#include <vector>

#include "JvmLibrary.h"

/// Creates the machine on a thread of its own.
///
/// A machine that fails while it starts may end the process, from the thread that creates it. The
/// abort hook keeps that thread for good instead, so the process lives, and the caller learns of
/// the failure.
class JvmStart
{
public:
    /// What came of a start.
    struct Outcome
    {
        std::optional<jint> result; ///< of JNI_CreateJavaVM; none if the machine gave up
        JavaVM* machine = nullptr;
    };

    /// No thread is attached to the machine afterwards. The texts behind the options are in `texts`
    /// or live for ever. Throws std::system_error if there is no thread to be had.
    static Outcome create(const JvmLibrary& library, std::vector<JavaVMOption> options,
                          std::vector<std::string> texts);

    /// The abort hook calls it. Does not return on a thread that creates a machine; does nothing on
    /// others.
    static void giveUp();
};
