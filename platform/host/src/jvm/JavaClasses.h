#pragma once

#include <jni.h>

#include <mutex>
#include <string>
#include <unordered_map>

/// Cache of Java classes by name: global references for any thread, kept until the process ends.
class JavaClasses
{
public:
    static JavaClasses& instance();

    /// Returns null with an exception pending if there is no such class.
    jclass find(JNIEnv* env, const char* name);

private:
    jclass known(const std::string& name);
    /// Stores the reference. If another thread was first, deletes it and returns that thread's.
    jclass keep(JNIEnv* env, const std::string& name, jclass global);

    std::mutex _mutex;
    std::unordered_map<std::string, jclass> _classes;
};
