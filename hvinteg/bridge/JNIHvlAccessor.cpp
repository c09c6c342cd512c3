#include "bridge/JNIHvlAccessor.h"

#include <algorithm>
#include <utility>

#include "bridge/JNIObjectManager.h"
#include "bridge/JavaCall.h"

JNIHvlAccessor::JNIHvlAccessor() : JNIAccessor(nullptr)
{
    setEnv(getJNIObjectManager()->getEnv());
}

JNIHvlAccessor::JNIHvlAccessor(const JNIHvlAccessor& other) : JNIAccessor(other)
{
    const std::vector<jobject>& locals = other._localRefs;
    if (std::find(locals.begin(), locals.end(), other.getObject()) == locals.end())
        return;
    setObject(nullptr);
    // A local reference is invalid on another thread; there the copy wraps nothing.
    if (onOwnThread()) {
        setObject(getEnv()->NewLocalRef(other.getObject()));
        keepLocal(getObject());
    }
}

JNIHvlAccessor& JNIHvlAccessor::operator=(const JNIHvlAccessor& other)
{
    if (this != &other) {
        JNIHvlAccessor copy(other);
        releaseLocals();
        JNIAccessor::operator=(copy);
        std::swap(_localRefs, copy._localRefs);
    }
    return *this;
}

JNIHvlAccessor::~JNIHvlAccessor()
{
    releaseLocals();
}

/// Deletes the local references, if the calling thread is the one that owns them.
void JNIHvlAccessor::releaseLocals()
{
    const std::vector<jobject> locals = std::exchange(_localRefs, {});
    if (locals.empty() || !onOwnThread())
        return;
    for (jobject const local : locals)
        getEnv()->DeleteLocalRef(local);
}

void JNIHvlAccessor::init(jobject object, bool global)
{
    setClassOf(object);
    setObjectG(object, global, true);
    handleException(false);
}

void JNIHvlAccessor::init(const char* className, bool global)
{
    setClass(className);
    LocalRef<> object = JavaCall(*this, "<init>", "()V", OnFailure::Record).construct();
    setObjectG(global ? object.get() : object.release(), global, true);
    handleException(false);
}

void JNIHvlAccessor::setObjectG(jobject object, bool global, bool track)
{
    if (global)
        object = getJNIObjectManager()->createGlobalRef(object, track);
    else if (track)
        keepLocal(object);
    setObject(object);
}

void JNIHvlAccessor::keepLocal(jobject local)
{
    LocalRef<> owner(getEnv(), local); // until the wrapper stores it
    if (local != nullptr)
        _localRefs.push_back(local);
    owner.release();
}

jobject JNIHvlAccessor::finishNew(jobject local, bool global, bool track)
{
    if (track)
        keepLocal(local);
    if (!global)
        return local;
    jobject const result = getJNIObjectManager()->createGlobalRef(local, track);
    if (!track && local != nullptr)
        getEnv()->DeleteLocalRef(local);
    return result;
}

jobject JNIHvlAccessor::newObject(const std::string& value, bool global, bool)
{
    jobject const local = ToJString(value);
    exceptionCheck();
    return finishNew(local, global, false);
}

jobject JNIHvlAccessor::newObject(const char* value, bool global, bool track)
{
    jobject const local = value == nullptr ? nullptr : ToJString(value);
    exceptionCheck();
    return finishNew(local, global, track);
}

jobject JNIHvlAccessor::newObject(int value, bool global, bool track)
{
    jvalue argument{};
    argument.i = value;
    return finishNew(JavaCall::box(*this, "java/lang/Integer", "(I)V", argument), global, track);
}

jobject JNIHvlAccessor::newObject(double value, bool global, bool track)
{
    jvalue argument{};
    argument.d = value;
    return finishNew(JavaCall::box(*this, "java/lang/Double", "(D)V", argument), global, track);
}

jobject JNIHvlAccessor::newObject(long long value, bool global, bool track)
{
    jvalue argument{};
    argument.j = value;
    return finishNew(JavaCall::box(*this, "java/lang/Long", "(J)V", argument), global, track);
}

jobject JNIHvlAccessor::newObject(bool value, bool global, bool track)
{
    jvalue argument{};
    argument.z = value ? JNI_TRUE : JNI_FALSE;
    return finishNew(JavaCall::box(*this, "java/lang/Boolean", "(Z)V", argument), global, track);
}

std::string JNIHvlAccessor::getString(jstring text)
{
    std::string result = FromJString(text);
    handleException(false);
    return result;
}

void JNIHvlAccessor::getString(jstring text, std::string& out)
{
    out = getString(text);
}

JNIObjectManager* JNIHvlAccessor::getJNIObjectManager() const
{
    return JNIObjectManager::getManager();
}
