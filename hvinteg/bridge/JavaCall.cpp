#include "bridge/JavaCall.h"

#include "JNIException.h"

JavaCall::JavaCall(JNIHvlAccessor& wrapper, const char* name, const char* signature,
                   OnFailure onFailure)
    : _wrapper(wrapper), _env(wrapper.getEnv()), _type(wrapper.getClass()), _name(name),
      _onFailure(onFailure)
{
    _method = wrapper.setMethod(name, signature);
    settle();
    require(_method);
}

JavaCall::JavaCall(JNIHvlAccessor& wrapper, jclass type, const char* name, const char* signature,
                   OnFailure onFailure)
    : JavaCall(wrapper, type, Kind::Instance, name, signature, onFailure)
{
}

JavaCall::JavaCall(JNIHvlAccessor& wrapper, jclass type, Kind kind, const char* name,
                   const char* signature, OnFailure onFailure)
    : _wrapper(wrapper), _env(wrapper.getEnv()), _type(type), _name(name), _onFailure(onFailure)
{
    if (type != nullptr)
        _method = kind == Kind::Static ? _env->GetStaticMethodID(type, name, signature)
                                       : _env->GetMethodID(type, name, signature);
    settle();
    require(_method);
}

JavaCall JavaCall::ofStatic(JNIHvlAccessor& wrapper, jclass type, const char* name,
                            const char* signature, OnFailure onFailure)
{
    return JavaCall(wrapper, type, Kind::Static, name, signature, onFailure);
}

jobject JavaCall::box(JNIHvlAccessor& wrapper, const char* className, const char* signature,
                      jvalue value)
{
    JavaCall call(wrapper, wrapper.classNamed(className), "<init>", signature);
    call._arguments.push_back(value);
    return call.construct().release();
}

JavaCall& JavaCall::text(const std::string& value)
{
    if (_failed)
        return *this;
    LocalRef<> string(_env, _wrapper.ToJString(value));
    settle();
    require(string.get());
    return take(std::move(string));
}

JavaCall& JavaCall::object(jobject value)
{
    addObject(value);
    return *this;
}

JavaCall& JavaCall::take(LocalRef<>&& value)
{
    addObject(value.get());
    _locals.push_back(std::move(value));
    return *this;
}

JavaCall& JavaCall::wrapped(const JNIHvlAccessor* wrapper)
{
    addObject(wrapper == nullptr ? nullptr : wrapper->getObject());
    return *this;
}

JavaCall& JavaCall::number(jint value)
{
    jvalue argument{};
    argument.i = value;
    _arguments.push_back(argument);
    return *this;
}

JavaCall& JavaCall::flag(bool value)
{
    jvalue argument{};
    argument.z = value ? JNI_TRUE : JNI_FALSE;
    _arguments.push_back(argument);
    return *this;
}

void JavaCall::addObject(jobject value)
{
    jvalue argument{};
    argument.l = value;
    _arguments.push_back(argument);
}

template <class Result, class Function>
Result JavaCall::invoke(jobject receiver, Function function)
{
    Result result{};
    if (accepts(receiver)) {
        result = (_env->*function)(receiver, _method, _arguments.data());
        clearArguments();
        settle();
    }
    return result;
}

LocalRef<> JavaCall::callObject(jobject receiver)
{
    return {_env, invoke<jobject>(receiver, &JNIEnv::CallObjectMethodA)};
}

std::string JavaCall::callText(jobject receiver)
{
    const LocalRef<> text = callObject(receiver);
    return _wrapper.getString(static_cast<jstring>(text.get()));
}

bool JavaCall::callBoolean(jobject receiver)
{
    return invoke<jboolean>(receiver, &JNIEnv::CallBooleanMethodA) == JNI_TRUE;
}

jint JavaCall::callInt(jobject receiver)
{
    return invoke<jint>(receiver, &JNIEnv::CallIntMethodA);
}

jdouble JavaCall::callDouble(jobject receiver)
{
    return invoke<jdouble>(receiver, &JNIEnv::CallDoubleMethodA);
}

void JavaCall::callVoid(jobject receiver)
{
    if (!accepts(receiver))
        return;
    _env->CallVoidMethodA(receiver, _method, _arguments.data());
    clearArguments();
    settle();
}

LocalRef<> JavaCall::callStaticObject()
{
    if (_failed)
        return {};
    LocalRef<> result(_env, _env->CallStaticObjectMethodA(_type, _method, _arguments.data()));
    clearArguments();
    settle();
    return result;
}

LocalRef<> JavaCall::construct()
{
    if (_failed)
        return {};
    LocalRef<> result(_env, _env->NewObjectA(_type, _method, _arguments.data()));
    clearArguments();
    settle();
    require(result.get());
    return result;
}

void JavaCall::constructWrapped()
{
    const LocalRef<> object = construct();
    _wrapper.setObjectG(object.get(), true, true);
    _wrapper.handleException(false);
}

/// JNI does not check the receiver, and an object of a wrong class would end the process.
bool JavaCall::accepts(jobject receiver)
{
    if (_failed)
        return false;
    if (receiver == nullptr)
        raise("java/lang/NullPointerException", "There is no Java object to ask");
    else if (_env->IsInstanceOf(receiver, _type) != JNI_TRUE)
        raise("java/lang/ClassCastException", "The Java object is of another class");
    return !_failed;
}

/// The same call may be repeated with other arguments, for example in a loop.
void JavaCall::clearArguments()
{
    _arguments.clear();
    _locals.clear();
}

/// Handles a pending exception as OnFailure requires.
void JavaCall::settle()
{
    if (_onFailure == OnFailure::Throw) {
        _wrapper.exceptionCheck();
    } else if (_env->ExceptionCheck() == JNI_TRUE) {
        _wrapper.handleException(false);
        _failed = true;
    }
}

/// Reports an error of this code as a Java exception, so that callers handle it like Java's own.
void JavaCall::raise(const char* className, const std::string& message)
{
    if (jclass const type = _wrapper.classNamed(className); type != nullptr)
        _env->ThrowNew(type, (message + ": " + _name).c_str());
    settle();
    require(nullptr);
}

/// JNI never returns null without an exception. If it does, the null must not be used.
void JavaCall::require(const void* result)
{
    if (result != nullptr || _failed)
        return;
    _failed = true;
    if (_onFailure == OnFailure::Throw)
        throw JNIException("java.lang.InternalError",
                           std::string("The Java machine gave nothing for ") + _name, "");
}
