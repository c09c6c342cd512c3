#pragma once

#include <jni.h>

#include <mutex>
#include <string>
#include <unordered_map>

/// The Java classes that were found by name: global references, kept for the life of the process,
/// for any thread. A class is looked up far more often than there are classes.
class JavaClasses
{
public:
    static JavaClasses& instance();

    /// Null with an exception pending if there is no such class.
    jclass find(JNIEnv* env, const char* name);

private:
    jclass known(const std::string& name);
    /// Keeps the reference; where another thread was first, lets it go and gives that thread's.
    jclass keep(JNIEnv* env, const std::string& name, jclass global);

    std::mutex _mutex;
    std::unordered_map<std::string, jclass> _classes;
};
