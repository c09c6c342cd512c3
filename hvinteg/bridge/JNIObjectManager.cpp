#include "bridge/JNIObjectManager.h"

#include <utility>
#include <vector>

#include "VexaJVM.h"
#include "bridge/JNIHvlAccessor.h"
#include "bridge/JavaThreadScope.h"

namespace {
/// Announces the local references that the expressions of a job keep until it is composed. The
/// machine allows them without this call, but its checked mode reports a larger number as a leak.
void announceLocals(JNIEnv* env)
{
    constexpr jint Expected = 16384;
    if (env->EnsureLocalCapacity(Expected) != JNI_OK)
        env->ExceptionClear();
}
} // namespace

struct JNIObjectManager::Data
{
    JNIEnv* env = nullptr;
    std::vector<jobject> globalRefs;
    std::vector<std::unique_ptr<JNIHvlAccessor>> cleanList;

    Data() { attach(); }
    void attach();
    void clean();
};

void JNIObjectManager::Data::attach()
{
    VexaJVM* machine = VexaJVM::GetInstance();
    env = nullptr;
    if (!machine->IsStarted() && !machine->WaitForStartedJVM())
        machine->StartJVMAndAttachThread(&env);
    else
        machine->AttachCurrentThread(&env);
    announceLocals(env);
}

void JNIObjectManager::Data::clean()
{
    const std::vector<jobject> references = std::exchange(globalRefs, {});
    if (!references.empty()) {
        // A global reference may be deleted from any thread, in that thread's environment.
        const JavaThreadScope thread;
        for (jobject const reference : references)
            thread.env()->DeleteGlobalRef(reference);
    }
    for (std::unique_ptr<JNIHvlAccessor>& wrapper : std::exchange(cleanList, {}))
        wrapper.reset();
}

// Not an owning pointer: when the process ends, the machine may be gone first. Remaining references
// are then not deleted.
JNIObjectManager* JNIObjectManager::_this = nullptr;

JNIObjectManager::JNIObjectManager() : _data(std::make_unique<Data>()) {}

JNIObjectManager::~JNIObjectManager()
{
    _data->clean();
}

JNIObjectManager* JNIObjectManager::newManager()
{
    releaseManager();
    _this = new JNIObjectManager; // deleted by releaseManager
    return _this;
}

JNIObjectManager* JNIObjectManager::getManager()
{
    return _this == nullptr ? newManager() : _this;
}

void JNIObjectManager::releaseManager()
{
    const std::unique_ptr<JNIObjectManager> former(std::exchange(_this, nullptr));
}

void JNIObjectManager::reAttachJVM()
{
    _data->attach();
}

JNIEnv* JNIObjectManager::getEnv() const
{
    return _data->env;
}

jobject JNIObjectManager::createGlobalRef(jobject object, bool tracked)
{
    if (object == nullptr)
        return nullptr;
    if (!tracked)
        return _data->env->NewGlobalRef(object);
    // Reserve the entry first: a reference that cannot be stored would never be deleted.
    _data->globalRefs.push_back(nullptr);
    jobject const reference = _data->env->NewGlobalRef(object);
    if (reference != nullptr)
        _data->globalRefs.back() = reference;
    else
        _data->globalRefs.pop_back();
    return reference;
}

void JNIObjectManager::addtoCleanList(JNIHvlAccessor* wrapper)
{
    if (wrapper == nullptr)
        return;
    std::unique_ptr<JNIHvlAccessor> owner(wrapper);
    _data->cleanList.push_back(std::move(owner));
}

void JNIObjectManager::cleanJRef()
{
    _data->clean();
}
