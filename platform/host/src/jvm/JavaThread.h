#pragma once

#include <jni.h>

#include <cstdint>

/// The attachment of the calling thread to the virtual machine.
///
/// Several callers may attach a thread, and each detaches. The last one ends the attachment, if it
/// was made here. A thread that ends while attached is detached automatically, because the machine
/// must not keep a thread that no longer exists.
class JavaThread
{
public:
    /// The object of the calling thread.
    static JavaThread& current();

    JavaThread(const JavaThread&) = delete;
    JavaThread& operator=(const JavaThread&) = delete;

    /// Returns JNI's result code.
    jint attach(JavaVM* machine, JNIEnv** env);
    /// Attaches until the thread ends; detach has no effect on this attachment.
    jint attachForGood(JavaVM* machine, JNIEnv** env);
    void detach();

    /// A number that identifies the calling thread's attachment and is never reused on any thread.
    /// An environment does not identify it, because the machine reuses addresses.
    static std::uint64_t attachment();

private:
    JavaThread() = default;
    ~JavaThread();

    JavaVM* _machine = nullptr; ///< set while an attachment made here is open
    int _depth = 0;
    bool _isForGood = false;
};
