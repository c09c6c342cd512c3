#include "JavaThread.h"

#include <unistd.h>

#include <atomic>

namespace {
constexpr jint JniVersion = JNI_VERSION_10;

std::uint64_t nextAttachment()
{
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

// Not a member: static objects use it after the main thread's JavaThread is destroyed. A thread
// that others attach keeps its first number.
thread_local std::uint64_t currentAttachment = nextAttachment();
} // namespace

JavaThread& JavaThread::current()
{
    static thread_local JavaThread thread;
    return thread;
}

JavaThread::~JavaThread()
{
    // The main thread ends with the process and does not detach.
    if (_machine != nullptr && getpid() != gettid())
        _machine->DetachCurrentThread();
}

jint JavaThread::attach(JavaVM* machine, JNIEnv** env)
{
    jint result = machine->GetEnv(reinterpret_cast<void**>(env), JniVersion);
    if (result == JNI_EDETACHED) {
        result = machine->AttachCurrentThread(reinterpret_cast<void**>(env), nullptr);
        if (result == JNI_OK) {
            _machine = machine;
            currentAttachment = nextAttachment();
        }
    }
    if (result == JNI_OK)
        ++_depth;
    return result;
}

jint JavaThread::attachForGood(JavaVM* machine, JNIEnv** env)
{
    const jint result = attach(machine, env);
    _isForGood = _isForGood || result == JNI_OK;
    return result;
}

std::uint64_t JavaThread::attachment()
{
    return currentAttachment;
}

void JavaThread::detach()
{
    if (_depth == 0 || --_depth > 0 || _machine == nullptr || _isForGood)
        return;
    _machine->DetachCurrentThread();
    _machine = nullptr;
}
