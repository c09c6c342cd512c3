#include "JavaClasses.h"

JavaClasses& JavaClasses::instance()
{
    // Never destroyed, like the machine of the references.
    static JavaClasses* const classes = new JavaClasses;
    return *classes;
}

jclass JavaClasses::find(JNIEnv* env, const char* name)
{
    if (const jclass found = known(name); found != nullptr)
        return found;
    // Without the lock, because the machine may run code of the class.
    const jclass local = env->FindClass(name);
    if (local == nullptr)
        return nullptr;
    const auto global = static_cast<jclass>(env->NewGlobalRef(local));
    env->DeleteLocalRef(local);
    return global == nullptr ? nullptr : keep(env, name, global);
}

jclass JavaClasses::known(const std::string& name)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _classes.find(name);
    return found == _classes.end() ? nullptr : found->second;
}

jclass JavaClasses::keep(JNIEnv* env, const std::string& name, jclass global)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto [entry, added] = _classes.emplace(name, global);
    if (!added)
        env->DeleteGlobalRef(global);
    return entry->second;
}
