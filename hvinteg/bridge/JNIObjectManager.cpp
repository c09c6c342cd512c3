#include "bridge/JNIObjectManager.h"

#include <utility>
#include <vector>

#include "VexaJVM.h"
#include "bridge/JNIHvlAccessor.h"
#include "bridge/JavaThreadScope.h"

namespace {
/// The expressions of a job live on local references until the job is composed. The machine grants
/// as many as are asked for one by one; announcing them keeps its checked mode, which takes more
/// than a few for a leak, from complaining.
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
        // A global reference can be deleted from any thread, with that thread's environment.
        const JavaThreadScope thread;
        for (jobject const reference : references)
            thread.env()->DeleteGlobalRef(reference);
    }
    for (std::unique_ptr<JNIHvlAccessor>& wrapper : std::exchange(cleanList, {}))
        wrapper.reset();
}

// Not an owning pointer: at the end of the process the machine may be gone before it, so what is
// left then is left alone.
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
    // The place first: nobody would release a reference that there is no memory to remember.
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
