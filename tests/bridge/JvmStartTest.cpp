#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "JNIAccessor.h"
#include "PathFactory.h"
#include "VexaJVM.h"
#include "VexaJVMError.h"

// A machine starts once in a process, so each case runs in a child of its own, which tells its
// findings by its exit status.

namespace {
namespace fs = std::filesystem;

/// An installation somewhere else.
class Installation : public PathFinder
{
public:
    explicit Installation(std::string path) : _path(std::move(path))
    {
        PathFactory::setPathInstance(this);
    }
    ~Installation() override { PathFactory::setPathInstance(nullptr); }
    std::string getInstallationPath() const override { return _path; }

private:
    std::string _path;
};

/// A directory with an engine's jar of the given content in it.
class FakeHome
{
public:
    explicit FakeHome(const char* jarContent)
    {
        std::string pattern = (fs::temp_directory_path() / "hvhomeXXXXXX").string();
        _path = mkdtemp(pattern.data());
        fs::create_directories(_path / "hv/af/components");
        if (jarContent != nullptr)
            std::ofstream(_path / "hv/af/components/hvengine.jar") << jarContent;
    }
    ~FakeHome() { fs::remove_all(_path); }
    std::string path() const { return _path.string(); }
    std::string jar() const { return path() + "/hv/af/components/hvengine.jar"; }

private:
    fs::path _path;
};

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
    const FakeHome home(nullptr);
    {
        const Installation elsewhere(home.path());
        const std::string failure = startFailure();
        demand(contains(failure, "missing") && contains(failure, home.jar()), failure);
        demand(!VexaJVM::GetInstance()->WaitForStartedJVM(), "a machine is up");
    }
    demandStart();
    demand(VexaJVM::GetInstance()->IsStarted(), "not started");
}

void brokenJarFailsForGood()
{
    const FakeHome home("this is no archive");
    const Installation elsewhere(home.path());
    const std::string failure = startFailure();
    demand(contains(failure, "broken") && contains(failure, home.jar()), failure);
    demand(startFailure() == failure, "the second attempt tells something else");
    demand(!VexaJVM::GetInstance()->IsStarted(), "started");
}

void wrongOptionIsTold()
{
    setenv("VEXA_JVM_OPTIONS", "-XX:NoSuchOption=1", 1);
    const std::string failure = startFailure();
    demand(contains(failure, "NoSuchOption"), failure);
}

void uselessJavaHomeIsPassedOver()
{
    const FakeHome home(nullptr);
    fs::create_directories(home.path() + "/lib/server");
    std::ofstream(home.path() + "/lib/server/libjvm.so") << "no library";
    setenv("JAVA_HOME", home.path().c_str(), 1);
    setenv("PATH", "/nowhere", 1);
    demandStart();
    const std::string& path = VexaJVM::GetInstance()->LibraryPath();
    demand(!contains(path, home.path()) && contains(path, "libjvm.so"), path);
}

void processStaysAsItWas()
{
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("VEXA_JVM_OPTIONS", " -Dhv.test.a=1   -verbose:gc ", 1);
    VexaJVM* machine = VexaJVM::GetInstance();
    std::string printed;
    machine->SetOutput([&](const std::string& text) { printed += text; });
    machine->AddOption("-Dhv.test.b=2");
    demandStart();
    demand(std::string(std::setlocale(LC_ALL, nullptr)) == "C", "the locale has changed");
    demand(!printed.empty(), "the machine's output does not arrive");
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

struct Case
{
    const char* name;
    void (*run)();
};

class JvmStart : public testing::TestWithParam<Case>
{
};
} // namespace

TEST_P(JvmStart, InAProcessOfItsOwn)
{
    EXPECT_EXIT(
        {
            GetParam().run();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, JvmStart,
                         testing::Values(Case{"MissingJarCanBeMended", missingJarCanBeMended},
                                         Case{"BrokenJarFailsForGood", brokenJarFailsForGood},
                                         Case{"WrongOptionIsTold", wrongOptionIsTold},
                                         Case{"UselessJavaHomeIsPassedOver",
                                              uselessJavaHomeIsPassedOver},
                                         Case{"ProcessStaysAsItWas", processStaysAsItWas},
                                         Case{"OneThreadStarts", oneThreadStarts},
                                         Case{"AttachmentsNest", attachmentsNest},
                                         Case{"EndedThreadsAreDetached", endedThreadsAreDetached}),
                         [](const auto& one) { return one.param.name; });

TEST(JvmExit, AnExitFromJavaDoesNotPassForSuccess)
{
    EXPECT_EXIT(javaExitAborts(), testing::KilledBySignal(SIGABRT), "");
}
