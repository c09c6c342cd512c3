#include "engine/ClusterMachine.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace EngineTest {
namespace {

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

[[noreturn]] void giveUp(const char* what)
{
    std::fprintf(stderr, "the tests cannot run on the cluster: %s\n", what);
    std::abort();
}

JNIEnv* startedMachine()
{
    void* const library = dlopen(variable("HV_TEST_JVM").c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (!library)
        giveUp(dlerror());
    using Create = jint (*)(JavaVM**, void**, void*);
    const auto create = reinterpret_cast<Create>(dlsym(library, "JNI_CreateJavaVM"));
    std::string classPath = "-Djava.class.path=" + variable("HV_TEST_COMPONENTS") + "/hvengine.jar";
    std::array<std::string, 4> texts{classPath, "-Xrs", "-Xmx512m", "-Xcheck:jni"};
    std::array<JavaVMOption, texts.size()> options{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        options[i].optionString = texts[i].data();
    JavaVMInitArgs arguments{JNI_VERSION_1_8, texts.size(), options.data(), JNI_FALSE};
    JavaVM* machine = nullptr;
    void* env = nullptr;
    if (!create || create(&machine, &env, &arguments) != JNI_OK)
        giveUp("the Java virtual machine does not start");
    return static_cast<JNIEnv*>(env);
}

} // namespace

std::string clusterUrl()
{
    return variable("HV_TEST_ENGINE_URL");
}

JNIEnv* clusterMachine()
{
    static JNIEnv* const env = startedMachine();
    return env;
}

} // namespace EngineTest
