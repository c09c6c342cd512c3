#include "JvmLibrary.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "VexaJVMError.h"

namespace {
namespace fs = std::filesystem;

constexpr const char* SystemFolder = "/usr/lib/jvm";
constexpr const char* SystemDefault = "/usr/lib/jvm/default-java";

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// The home directory of the `java` on the path. Distributions use links, so the name is resolved
/// before the two parent folders are taken.
JvmPlace placeOnPath()
{
    std::istringstream folders(environment("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path program = fs::path(folder.empty() ? "." : folder) / "java";
        if (access(program.c_str(), X_OK) != 0)
            continue;
        std::error_code error;
        const fs::path real = fs::canonical(program, error);
        if (!error)
            return {program.string() + " on the path", real.parent_path().parent_path().string()};
    }
    return {"java on the path", ""};
}

void addSystemPlaces(std::vector<JvmPlace>& places)
{
    places.push_back({"the system's default", SystemDefault});
    std::vector<std::string> others;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(SystemFolder, error)) {
        std::error_code ignored;
        if (entry.path() != SystemDefault && fs::is_directory(entry.path(), ignored))
            others.push_back(entry.path().string());
    }
    std::sort(others.begin(), others.end());
    for (const std::string& home : others)
        places.push_back({"a machine of the system", home});
}
} // namespace

std::vector<JvmPlace> jvmPlaces()
{
    std::vector<JvmPlace> places;
    places.push_back({"JAVA_HOME", environment("JAVA_HOME")});
    places.push_back(placeOnPath());
    addSystemPlaces(places);
    return places;
}

JvmLibrary::Entry JvmLibrary::entryOf(const std::string& path, std::string& reason)
{
    std::error_code error;
    if (!fs::exists(path, error)) {
        reason = "no such file";
        return nullptr;
    }
    // Global, because the machine's libraries look up its symbols by name.
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL);
    void* entry = library == nullptr ? nullptr : dlsym(library, "JNI_CreateJavaVM");
    if (entry == nullptr) {
        const char* text = dlerror();
        reason = text == nullptr ? "it cannot be loaded" : text;
    }
    return reinterpret_cast<Entry>(entry);
}

JvmLibrary JvmLibrary::load()
{
    std::string tried;
    for (const JvmPlace& place : jvmPlaces()) {
        if (place.home.empty()) {
            tried.append("\n  ").append(place.reason).append(": not set or not found");
            continue;
        }
        const std::string path = place.home + "/lib/server/libjvm.so";
        std::string reason;
        if (const Entry entry = entryOf(path, reason); entry != nullptr)
            return {path, entry};
        tried.append("\n  ").append(place.reason).append(": ");
        tried.append(path).append(": ").append(reason);
    }
    throw VexaJVMError("No Java virtual machine was found. Places tried:" + tried);
}

jint JvmLibrary::create(JavaVM** machine, JNIEnv** env, JavaVMInitArgs* arguments) const
{
    return _entry(machine, reinterpret_cast<void**>(env), arguments);
}
