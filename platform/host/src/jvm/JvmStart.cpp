#include "JvmStart.h"

#include <unistd.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "datafile/StartedThread.h"

namespace {

/// A start, shared by the creating and the waiting thread. The creating thread keeps it if the
/// machine aborts.
struct Attempt
{
    JvmLibrary library;
    std::vector<JavaVMOption> options;
    std::vector<std::string> texts;

    std::mutex mutex;
    std::condition_variable changed;
    bool isOver = false;
    JvmStart::Outcome outcome;

    Attempt(JvmLibrary usedLibrary, std::vector<JavaVMOption> usedOptions,
            std::vector<std::string> usedTexts)
        : library(std::move(usedLibrary)), options(std::move(usedOptions)),
          texts(std::move(usedTexts))
    {
    }

    void end(const JvmStart::Outcome& how)
    {
        const std::lock_guard lock(mutex);
        outcome = how;
        isOver = true;
        changed.notify_all();
    }
    JvmStart::Outcome wait()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isOver; });
        return outcome;
    }
};

/// Set on a thread while it creates a machine.
thread_local Attempt* current = nullptr;

void run(Attempt& attempt)
{
    JavaVMInitArgs arguments{JNI_VERSION_10, static_cast<jint>(attempt.options.size()),
                             attempt.options.data(), JNI_FALSE};
    JavaVM* machine = nullptr;
    JNIEnv* env = nullptr;
    current = &attempt;
    const jint result = attempt.library.create(&machine, &env, &arguments);
    current = nullptr;
    if (result == JNI_OK)
        machine->DetachCurrentThread();
    attempt.end({result, machine});
}

} // namespace

JvmStart::Outcome JvmStart::create(const JvmLibrary& library, std::vector<JavaVMOption> options,
                                   std::vector<std::string> texts)
{
    const auto attempt = std::make_shared<Attempt>(library, std::move(options), std::move(texts));
    std::thread thread =
        datafile::startedThread("starts the Java virtual machine", [attempt] { run(*attempt); });
    const Outcome outcome = attempt->wait();
    if (outcome.result)
        thread.join();
    else
        thread.detach();
    return outcome;
}

bool JvmStart::isUnderWay()
{
    return current != nullptr;
}

void JvmStart::giveUp()
{
    if (current == nullptr)
        return;
    current->end({});
    for (;;)
        pause();
}
