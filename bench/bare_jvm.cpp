// A Java virtual machine with default options and one call into a jar: bare_jvm LIBJVM JAR.

#include <dlfcn.h>
#include <jni.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: bare_jvm LIBJVM JAR\n");
        return 2;
    }
    void* library = dlopen(argv[1], RTLD_NOW);
    using Create = jint (*)(JavaVM**, void**, void*);
    const auto create =
        library == nullptr ? nullptr : reinterpret_cast<Create>(dlsym(library, "JNI_CreateJavaVM"));
    if (create == nullptr)
        return 1;

    std::string classPath = std::string("-Djava.class.path=") + argv[2];
    JavaVMOption option{};
    option.optionString = classPath.data();
    JavaVMInitArgs arguments{};
    arguments.version = JNI_VERSION_10;
    arguments.nOptions = 1;
    arguments.options = &option;
    JavaVM* machine = nullptr;
    void* environment = nullptr;
    if (create(&machine, &environment, &arguments) != JNI_OK)
        return 1;

    auto* env = static_cast<JNIEnv*>(environment);
    const jclass type = env->FindClass("com/zor/json/java/JSONObject");
    if (type == nullptr)
        return 1;
    const jobject object = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
    const jmethodID toString = env->GetMethodID(type, "toString", "()Ljava/lang/String;");
    return env->CallObjectMethod(object, toString) == nullptr ? 1 : 0;
}
