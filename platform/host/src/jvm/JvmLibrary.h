#pragma once

#include <jni.h>

#include <string>
#include <utility>
#include <vector>

/// The machine's library, found on this computer and loaded into the process.
///
/// It is never unloaded: a Java virtual machine cannot be taken out of a process again.
class JvmLibrary
{
public:
    /// The first place that has a usable library wins: JAVA_HOME, `java` on the path, the system's
    /// default, any other machine of the system. Throws VexaJVMError, which lists the places tried.
    static JvmLibrary load();

    const std::string& path() const { return _path; }
    /// JNI_CreateJavaVM of the library, with its result code.
    jint create(JavaVM** machine, JNIEnv** env, JavaVMInitArgs* arguments) const;

private:
    using Entry = jint(JNICALL*)(JavaVM**, void**, void*);

    JvmLibrary(std::string path, Entry entry) : _path(std::move(path)), _entry(entry) {}
    static Entry entryOf(const std::string& path, std::string& reason);

    std::string _path;
    Entry _entry;
};

/// Where a machine may stand, in the order of the search: what led there, and its home directory.
struct JvmPlace
{
    std::string reason;
    std::string home; ///< empty: the reason leads nowhere
};

std::vector<JvmPlace> jvmPlaces();
