#include "JavaThread.h"

#include <unistd.h>

namespace {
constexpr jint JniVersion = JNI_VERSION_10;
} // namespace

JavaThread& JavaThread::current()
{
    static thread_local JavaThread thread;
    return thread;
}

JavaThread::~JavaThread()
{
    // The main thread ends with the process, where the machine is left alone.
    if (_machine != nullptr && getpid() != gettid())
        _machine->DetachCurrentThread();
}

jint JavaThread::attach(JavaVM* machine, JNIEnv** env)
{
    jint result = machine->GetEnv(reinterpret_cast<void**>(env), JniVersion);
    if (result == JNI_EDETACHED) {
        result = machine->AttachCurrentThread(reinterpret_cast<void**>(env), nullptr);
        if (result == JNI_OK)
            _machine = machine;
    }
    if (result == JNI_OK)
        ++_depth;
    return result;
}

void JavaThread::detach()
{
    if (_depth == 0 || --_depth > 0 || _machine == nullptr)
        return;
    _machine->DetachCurrentThread();
    _machine = nullptr;
}
