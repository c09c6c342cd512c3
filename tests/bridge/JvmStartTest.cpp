#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <utility>

#include "JNIAccessor.h"
#include "VexaJVM.h"
#include "VexaJVMError.h"
#include "support/Installation.h"
#include "support/ScratchFolder.h"

// A Java virtual machine starts only once in a process. So each case runs in a child process, whose
// exit status is the result.

namespace {

/// The engine's jar below a home of the host.
const std::string kJar = "hv/af/components/hvengine.jar";

std::string startFailure()
{
    JNIEnv* env = nullptr;
    try {
        VexaJVM::GetInstance()->StartJVMAndAttachThread(&env);
    } catch (const VexaJVMError& error) {
        return error.what();
    }
    return env == nullptr ? "no environment" : "";
}

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

void demand(bool condition, const std::string& otherwise)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", otherwise.c_str());
    std::exit(1);
}

void demandStart()
{
    const std::string failure = startFailure();
    demand(failure.empty(), failure);
}

void missingJarCanBeMended()
{
    const ScratchFolder home;
    {
        const Installation elsewhere(home.path);
        const std::string failure = startFailure();
        demand(contains(failure, "missing") && contains(failure, home.path / kJar), failure);
        demand(!VexaJVM::GetInstance()->WaitForStartedJVM(), "a machine is up");
    }
    demandStart();
    demand(VexaJVM::GetInstance()->IsStarted(), "not started");
}

void brokenJarFailsForGood()
{
    const ScratchFolder home;
    home.put(kJar, "this is no archive");
    const Installation elsewhere(home.path);
    const std::string failure = startFailure();
    demand(contains(failure, "broken") && contains(failure, home.path / kJar), failure);
    demand(startFailure() == failure, "the second attempt tells something else");
    demand(!VexaJVM::GetInstance()->IsStarted(), "started");
}

void wrongOptionIsTold()
{
    setenv("VEXA_JVM_OPTIONS", "-XX:NoSuchOption=1", 1);
    const std::string failure = startFailure();
    demand(contains(failure, "NoSuchOption"), failure);
}

/// Each by a machine of its own: the process goes on, and ends as it wants.
void machineThatGivesUpIsTold(const char* option, const std::string& reason)
{
    setenv("VEXA_JVM_OPTIONS", option, 1);
    const std::string failure = startFailure();
    demand(contains(failure, "does not start") && contains(failure, reason), failure);
    demand(startFailure() == failure, "the second attempt tells something else");
}

void tooLittleMemoryIsTold()
{
    machineThatGivesUpIsTold("-Xmx1m", "Too small maximum heap");
}

void tooLittleSpaceIsTold()
{
#ifndef HV_SANITIZED
    constexpr rlim_t kBytes = 600'000'000;
    const rlimit limit{kBytes, kBytes};
    setrlimit(RLIMIT_AS, &limit);
    machineThatGivesUpIsTold("-Dnothing=1", "Could not");
#endif
}

void missingModuleIsTold()
{
    machineThatGivesUpIsTold("--add-modules=none", "gave up");
}

void optionThatExitsIsRefused()
{
    const ScratchFolder folder;
    folder.put("options", "-Da=b\n-XX:+PrintFlagsInitial");
    const std::string inFile = "-XX:VMOptionsFile=" + (folder.path / "options").string();
    const std::pair<const char*, std::string> cases[] = {
        {"VEXA_JVM_OPTIONS", "-Da=b -Xinternalversion"},
        {"VEXA_JVM_OPTIONS", "-XX:+DumpSharedSpaces"},
        {"VEXA_JVM_OPTIONS", inFile},
        {"JAVA_TOOL_OPTIONS", "-Da='b c'\t\"-Xlog:help\""},
        {"JAVA_TOOL_OPTIONS", "-agentlib:jdwp=help"},
        {"JAVA_TOOL_OPTIONS", inFile},
        {"_JAVA_OPTIONS", "-Xshare:dump"},
    };
    for (const auto& [name, options] : cases) {
        setenv(name, options.c_str(), 1);
        const std::string failure = startFailure();
        demand(contains(failure, "ends the process"), options + ": " + failure);
        unsetenv(name);
    }
    setenv("JAVA_TOOL_OPTIONS", "-Dhv.test='-Xlog:help -Xshare:dump'", 1);
    demandStart();
}

void goneWorkingDirectoryIsTold()
{
    {
        const ScratchFolder folder;
        std::filesystem::current_path(folder.path);
    }
    const std::string failure = startFailure();
    demand(contains(failure, "working directory"), failure);
    std::filesystem::current_path("/");
    demandStart();
}

void uselessJavaHomeIsPassedOver()
{
    const ScratchFolder home;
    home.put("lib/server/libjvm.so", "no library");
    setenv("JAVA_HOME", home.path.c_str(), 1);
    setenv("PATH", "/nowhere", 1);
    demandStart();
    const std::string& path = VexaJVM::GetInstance()->LibraryPath();
    demand(!contains(path, home.path) && contains(path, "libjvm.so"), path);
}

void processStaysAsItWas()
{
    setenv("LC_ALL", "C.UTF-8", 1);
    const ScratchFolder folder;
    const std::string log = folder.path.string() + "/log.txt";
    setenv("VEXA_JVM_OPTIONS", (" -Dhv.test.a=1   -verbose:gc -Xlog:gc:file=" + log).c_str(), 1);
    VexaJVM* machine = VexaJVM::GetInstance();
    std::string printed;
    machine->SetOutput([&](const std::string& text) { printed += text; });
    machine->AddOption("-Dhv.test.b=2");
    demandStart();
    demand(std::string(std::setlocale(LC_ALL, nullptr)) == "C", "the locale has changed");
    demand(!printed.empty(), "the machine's output does not arrive");
    demand(std::filesystem::file_size(log) > 0, "the machine's file of messages is empty");
    const std::string socket = "/tmp/.java_pid" + std::to_string(getpid());
    demand(!std::filesystem::exists(socket), "there is a file " + socket);
}

void attachmentsNest()
{
    VexaJVM* machine = VexaJVM::GetInstance();
    demandStart();
    const auto attached = [machine] {
        void* env = nullptr;
        return machine->GetJavaVM()->GetEnv(&env, JNI_VERSION_10) == JNI_OK;
    };
    // The thread that started the machine stays attached, however often it detaches.
    JNIEnv* env = nullptr;
    machine->AttachCurrentThread(&env);
    machine->DetachCurrentThread();
    machine->DetachCurrentThread();
    demand(attached(), "the starting thread is detached");

    std::thread([&] {
        machine->DetachCurrentThread();
        machine->AttachCurrentThread(&env);
        machine->AttachCurrentThread(&env);
        machine->DetachCurrentThread();
        demand(attached(), "detached with an attachment open");
        machine->DetachCurrentThread();
        demand(!attached(), "still attached");

        machine->GetJavaVM()->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr);
        machine->AttachCurrentThread(&env);
        machine->DetachCurrentThread();
        demand(attached(), "an attachment made elsewhere is ended");
        machine->GetJavaVM()->DetachCurrentThread();
    }).join();
}

void accessorsAreAssigned()
{
    demandStart();
    JNIEnv* env = nullptr;
    VexaJVM::GetInstance()->AttachCurrentThread(&env);
    JNIAccessor target(env);
    {
        JNIAccessor source(env);
        jstring const text = source.ToJString("text");
        source.setClassOf(text);
        source.setMethod("length", "()I");
        target = source;
        const JNIAccessor& same = target;
        target = same;
        demand(target.getClass() != source.getClass(), "two accessors own one reference");
    }
    jclass const type = target.classNamed("java/lang/String");
    demand(env->IsSameObject(target.getClass(), type) == JNI_TRUE, "the class is not assigned");
    demand(target.setMethod("length", "()I") != nullptr, "the class is gone");
}

int liveJavaThreads()
{
    JNIEnv* env = nullptr;
    VexaJVM::GetInstance()->AttachCurrentThread(&env);
    JNIAccessor threads(env);
    threads.setClass("java/lang/Thread");
    const int count =
        env->CallStaticIntMethod(threads.getClass(), threads.setStaticMethod("activeCount", "()I"));
    VexaJVM::GetInstance()->DetachCurrentThread();
    return count;
}

void endedThreadsAreDetached()
{
    demandStart();
    const int before = liveJavaThreads();
    for (int index = 0; index < 20; ++index)
        std::thread([] {
            JNIEnv* env = nullptr;
            VexaJVM::GetInstance()->AttachCurrentThread(&env);
        }).join();
    demand(liveJavaThreads() == before, "threads that are gone stay attached");
}

void oneThreadStarts()
{
    std::vector<std::thread> threads;
    threads.reserve(8);
    std::atomic<int> up = 0;
    for (int index = 0; index < 8; ++index)
        threads.emplace_back([&up] {
            if (startFailure().empty())
                ++up;
        });
    for (std::thread& thread : threads)
        thread.join();
    demand(up == 8, "a thread has no environment");
}

void javaExitAborts()
{
    demandStart();
    JNIEnv* env = nullptr;
    VexaJVM::GetInstance()->AttachCurrentThread(&env);
    JNIAccessor system(env);
    system.setClass("java/lang/System");
    env->CallStaticVoidMethod(system.getClass(), system.setStaticMethod("exit", "(I)V"), 0);
}
/// An agent rejects its options and calls exit.
void agentExits()
{
    setenv("VEXA_JVM_OPTIONS", "-agentlib:jdwp=nothing", 1);
    startFailure();
}

void agentExitsWithHandler()
{
    VexaJVM::GetInstance()->SetEndHandler([](const std::string& reason) {
        std::fputs(reason.c_str(), stderr);
        std::_Exit(4);
    });
    agentExits();
}
} // namespace

TEST(JvmStart, EachInAProcessOfItsOwn)
{
    const std::pair<const char*, void (*)()> cases[] = {
        {"a missing jar can be mended", missingJarCanBeMended},
        {"a broken jar fails for good", brokenJarFailsForGood},
        {"a wrong option is told", wrongOptionIsTold},
        {"too little memory is told", tooLittleMemoryIsTold},
        {"too little space is told", tooLittleSpaceIsTold},
        {"a missing module is told", missingModuleIsTold},
        {"an option that exits is refused", optionThatExitsIsRefused},
        {"a gone working directory is told", goneWorkingDirectoryIsTold},
        {"a useless JAVA_HOME is passed over", uselessJavaHomeIsPassedOver},
        {"the process stays as it was", processStaysAsItWas},
        {"one thread starts", oneThreadStarts},
        {"attachments nest", attachmentsNest},
        {"accessors are assigned", accessorsAreAssigned},
        {"ended threads are detached", endedThreadsAreDetached},
    };
    for (const auto& [what, run] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EXIT((run(), std::exit(0)), testing::ExitedWithCode(0), "");
    }
}

TEST(JvmExit, AnExitFromJavaDoesNotPassForSuccess)
{
    EXPECT_EXIT(javaExitAborts(), testing::KilledBySignal(SIGABRT),
                "told to end the process with status 0");
    const char* const reason = "while it started; it was started with VEXA_JVM_OPTIONS=-agentlib";
    EXPECT_EXIT(agentExits(), testing::KilledBySignal(SIGABRT), reason);
    EXPECT_EXIT(agentExitsWithHandler(), testing::ExitedWithCode(4), reason);
}
