#include "support/RecordingJni.h"

#include <algorithm>
#include <jvmti.h>
#include <link.h>

#include <functional>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace {
RecordingJni* current = nullptr;

using Traits = RecordingJni::Traits;

template <auto Member>
constexpr Traits traitsOf{};

/// The recording wrapper of a function in the table.
template <auto Member, class Function>
struct Entry;

template <class First, class... Rest>
jobject firstReference(First first, Rest...)
{
    if constexpr (std::is_convertible_v<First, jobject>)
        return first;
    else
        return nullptr;
}

template <auto Member, class Result, class... Arguments>
struct Entry<Member, Result (*)(JNIEnv*, Arguments...)>
{
    static Result call(JNIEnv* env, Arguments... arguments)
    {
        constexpr const Traits& traits = traitsOf<Member>;
        const auto function = current->original().*Member;
        if (!current->concerns(__builtin_return_address(0)))
            return function(env, arguments...);
        if (!current->before(env, traits))
            return failure();
        if constexpr (traits.locals < 0 || traits.globals < 0)
            current->deleting(env, traits, firstReference(arguments...));
        if constexpr (std::is_void_v<Result>) {
            if constexpr (traits.name == std::string_view("ReleaseStringUTFChars"))
                current->lent(-1);
            function(env, arguments...);
        } else {
            const Result result = function(env, arguments...);
            if constexpr (std::is_convertible_v<Result, jobject>)
                current->made(env, traits, result);
            if constexpr (traits.name == std::string_view("GetStringUTFChars"))
                current->lent(result != nullptr ? 1 : 0);
            return result;
        }
    }

    static Result failure()
    {
        if constexpr (traitsOf<Member>.returnsCode)
            return JNI_ENOMEM;
        else if constexpr (!std::is_void_v<Result>)
            return Result{};
    }
};

// name, may fail, allowed with a pending exception, locals, globals
#define RECORDED_FUNCTIONS(X)                                                                      \
    X(FindClass, true, false, 1, 0)                                                                \
    X(GetObjectClass, false, false, 1, 0)                                                          \
    X(IsInstanceOf, false, false, 0, 0)                                                            \
    X(GetMethodID, true, false, 0, 0)                                                              \
    X(GetStaticMethodID, true, false, 0, 0)                                                        \
    X(GetStaticFieldID, true, false, 0, 0)                                                         \
    X(GetStaticObjectField, false, false, 1, 0)                                                    \
    X(NewObjectA, true, false, 1, 0)                                                               \
    X(NewObjectV, true, false, 1, 0)                                                               \
    X(CallObjectMethodA, true, false, 1, 0)                                                        \
    X(CallObjectMethodV, true, false, 1, 0)                                                        \
    X(CallBooleanMethodA, true, false, 0, 0)                                                       \
    X(CallIntMethodA, true, false, 0, 0)                                                           \
    X(CallDoubleMethodA, true, false, 0, 0)                                                        \
    X(CallVoidMethodA, true, false, 0, 0)                                                          \
    X(CallStaticObjectMethodA, true, false, 1, 0)                                                  \
    X(CallStaticObjectMethodV, true, false, 1, 0)                                                  \
    X(NewStringUTF, true, false, 1, 0)                                                             \
    X(NewString, true, false, 1, 0)                                                                \
    X(GetStringUTFChars, true, false, 0, 0)                                                        \
    X(ReleaseStringUTFChars, false, true, 0, 0)                                                    \
    X(NewObjectArray, true, false, 1, 0)                                                           \
    X(SetObjectArrayElement, true, false, 0, 0)                                                    \
    X(GetArrayLength, false, false, 0, 0)                                                          \
    X(GetObjectArrayElement, true, false, 1, 0)                                                    \
    X(GetByteArrayRegion, false, false, 0, 0)                                                      \
    X(GetLongArrayRegion, false, false, 0, 0)                                                      \
    X(NewBooleanArray, true, false, 1, 0)                                                          \
    X(GetBooleanArrayElements, true, false, 0, 0)                                                  \
    X(ReleaseBooleanArrayElements, false, true, 0, 0)                                              \
    X(EnsureLocalCapacity, true, false, 0, 0)                                                      \
    X(NewGlobalRef, true, false, 0, 1)                                                             \
    X(DeleteGlobalRef, false, true, 0, -1)                                                         \
    X(NewLocalRef, true, false, 1, 0)                                                              \
    X(DeleteLocalRef, false, true, -1, 0)                                                          \
    X(ThrowNew, false, false, 0, 0)                                                                \
    X(ExceptionCheck, false, true, 0, 0)                                                           \
    X(ExceptionOccurred, false, true, 1, 0)                                                        \
    X(ExceptionClear, false, true, 0, 0)

#define TRAITS(function, fails, allowed, locals, globals)                                          \
    template <>                                                                                    \
    constexpr Traits traitsOf<&JNINativeInterface_::function>{                                     \
        #function, fails,   allowed,                                                               \
        locals,    globals, std::string_view(#function) == "EnsureLocalCapacity"};
RECORDED_FUNCTIONS(TRAITS)

/// Collects the code of the test program and of our libraries.
int collectCode(dl_phdr_info* info, std::size_t, void* target)
{
    const std::string name = info->dlpi_name;
    if (!name.empty() && name.find("libhvinteg") == std::string::npos &&
        name.find("libvexahost") == std::string::npos)
        return 0;
    auto& add = *static_cast<std::function<void(const char*, const char*)>*>(target);
    for (int index = 0; index < info->dlpi_phnum; ++index) {
        const ElfW(Phdr)& header = info->dlpi_phdr[index];
        if (header.p_type == PT_LOAD && (header.p_flags & PF_X) != 0) {
            const char* begin = reinterpret_cast<const char*>(info->dlpi_addr + header.p_vaddr);
            add(begin, begin + header.p_memsz);
        }
    }
    return 0;
}
} // namespace

RecordingJni& RecordingJni::install(JavaVM* machine, bool withPendingCheck)
{
    // Lives as long as the process, because the function table points to it.
    static RecordingJni* const instance = new RecordingJni(machine, withPendingCheck);
    return *instance;
}

RecordingJni::RecordingJni(JavaVM* machine, bool withPendingCheck)
    : _withPendingCheck(withPendingCheck)
{
    std::function<void(const char*, const char*)> add = [this](const char* begin, const char* end) {
        _ours.push_back({begin, end});
    };
    dl_iterate_phdr(collectCode, &add);
    // Insert all names now. Allocations may be made to fail while calls are counted.
#define KNOW(function, fails, allowed, locals, globals) _counts.emplace(#function, 0);
    RECORDED_FUNCTIONS(KNOW)
    replaceTable(machine);
}

void RecordingJni::replaceTable(JavaVM* machine)
{
    JNIEnv* env = nullptr;
    jvmtiEnv* tool = nullptr;
    JNINativeInterface_* table = nullptr;
    if (machine->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_10) != JNI_OK ||
        machine->GetEnv(reinterpret_cast<void**>(&tool), JVMTI_VERSION_1_2) != JNI_OK ||
        tool->GetJNIFunctionTable(&table) != JVMTI_ERROR_NONE)
        throw std::runtime_error("the function table of the machine cannot be read");
    _classClass = keptClass(env, "java/lang/Class");
    _outOfMemory = keptClass(env, "java/lang/OutOfMemoryError");
    _exception = keptClass(env, "java/lang/IllegalStateException");
    _original = *table;
    current = this;
#define REPLACE(function, fails, allowed, locals, globals)                                         \
    table->function =                                                                              \
        &Entry<&JNINativeInterface_::function, decltype(JNINativeInterface_::function)>::call;
    RECORDED_FUNCTIONS(REPLACE)
    if (tool->SetJNIFunctionTable(table) != JVMTI_ERROR_NONE)
        throw std::runtime_error("the function table of the machine cannot be replaced");
    tool->Deallocate(reinterpret_cast<unsigned char*>(table));
}

jclass RecordingJni::keptClass(JNIEnv* env, const char* name)
{
    jclass const local = env->FindClass(name);
    auto* const global = static_cast<jclass>(env->NewGlobalRef(local));
    env->DeleteLocalRef(local);
    return global;
}

void RecordingJni::restart()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    for (auto& [name, count] : _counts)
        count = 0;
    _violations.clear();
    _liveGlobals = 0;
    _liveLocals = _mostLocals = 0;
    _lentTexts = 0;
    _failAt = 0;
}

int RecordingJni::count(const std::string& function) const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _counts.find(function);
    return found == _counts.end() ? 0 : found->second;
}

int RecordingJni::liveGlobals() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _liveGlobals;
}

int RecordingJni::mostLocals() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _mostLocals;
}

int RecordingJni::lentTexts() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _lentTexts;
}

int RecordingJni::liveLocals() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _liveLocals;
}

std::vector<std::string> RecordingJni::violations() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _violations;
}

void RecordingJni::failAt(int number, Fault fault)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _calls = 0;
    _failAt = number;
    _failed = false;
    _failedFunction = {};
    _fault = fault;
}

bool RecordingJni::endFault()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _failAt = 0;
    return _failed;
}

std::string_view RecordingJni::failedFunction() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _failedFunction;
}

int RecordingJni::faultableCalls() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _calls;
}

bool RecordingJni::concerns(const void* caller) const
{
    for (const Code& code : _ours)
        if (caller >= code.begin && caller < code.end)
            return true;
    return false;
}

bool RecordingJni::before(JNIEnv* env, const Traits& traits)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    ++_counts[traits.name];
    if (_withPendingCheck && !traits.allowedPending && _original.ExceptionCheck(env) == JNI_TRUE)
        _violations.push_back(std::string(traits.name) + " with an exception pending");
    if (!traits.fails || ++_calls != _failAt)
        return true;
    _failed = true;
    _failedFunction = traits.name;
    if (_fault != Fault::NothingReturned)
        _original.ThrowNew(env, _fault == Fault::Exception ? _exception : _outOfMemory,
                           "made to fail");
    return false;
}

void RecordingJni::made(JNIEnv* env, const Traits& traits, jobject result)
{
    if (result == nullptr)
        return;
    const bool counts = traits.globals > 0 && !isClass(env, result);
    const std::lock_guard<std::mutex> lock(_mutex);
    _liveLocals += traits.locals;
    _mostLocals = std::max(_mostLocals, _liveLocals);
    _liveGlobals += counts ? 1 : 0;
}

void RecordingJni::deleting(JNIEnv* env, const Traits& traits, jobject reference)
{
    if (reference == nullptr)
        return;
    const bool counts = traits.globals < 0 && !isClass(env, reference);
    const std::lock_guard<std::mutex> lock(_mutex);
    _liveLocals += traits.locals;
    _liveGlobals -= counts ? 1 : 0;
}

void RecordingJni::lent(int texts)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _lentTexts += texts;
}

bool RecordingJni::isClass(JNIEnv* env, jobject object) const
{
    return _original.IsInstanceOf(env, object, _classClass) == JNI_TRUE;
}
