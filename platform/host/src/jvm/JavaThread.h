#pragma once

#include <jni.h>

#include <cstdint>

/// The attachment of the calling thread to the machine.
///
/// A thread may be attached by several callers at once, each of which detaches; only the last one
/// out ends the attachment, and only one that was made here. A thread that ends while it is still
/// attached is detached then: the machine must not be left with a thread that is gone.
class JavaThread
{
public:
    /// The calling thread's.
    static JavaThread& current();

    JavaThread(const JavaThread&) = delete;
    JavaThread& operator=(const JavaThread&) = delete;

    /// The result code of JNI.
    jint attach(JavaVM* machine, JNIEnv** env);
    /// The same for as long as the thread lives, however often it is detached.
    jint attachForGood(JavaVM* machine, JNIEnv** env);
    void detach();

    /// The number of the calling thread's attachment, which no other one has, before or after it
    /// and on whichever thread. An environment does not tell attachments apart: the machine gives
    /// the address of one that has ended to the next.
    static std::uint64_t attachment();

private:
    JavaThread() = default;
    ~JavaThread();

    JavaVM* _machine = nullptr; ///< set while an attachment that was made here is open
    int _depth = 0;
    bool _isForGood = false;
};
