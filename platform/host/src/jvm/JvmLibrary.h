#pragma once

#include <jni.h>

#include <string>
#include <utility>
#include <vector>

/// The machine's library, loaded into the process.
///
/// Never unloaded: a Java virtual machine cannot be removed from a process.
class JvmLibrary
{
public:
    /// Loads the first usable library of: JAVA_HOME, `java` on the path, the system's default, any
    /// other machine of the system. Throws VexaJVMError with the places tried.
    static JvmLibrary load();

    const std::string& path() const { return _path; }
    /// Calls JNI_CreateJavaVM of the library and returns its result code.
    jint create(JavaVM** machine, JNIEnv** env, JavaVMInitArgs* arguments) const;

private:
    using Entry = jint(JNICALL*)(JavaVM**, void**, void*);

    JvmLibrary(std::string path, Entry entry) : _path(std::move(path)), _entry(entry) {}
    static Entry entryOf(const std::string& path, std::string& reason);

    std::string _path;
    Entry _entry;
};

/// A possible location of a machine, in the order of the search: its source and home directory.
struct JvmPlace
{
    std::string reason;
    std::string home; ///< empty if the source names no directory
};

std::vector<JvmPlace> jvmPlaces();
