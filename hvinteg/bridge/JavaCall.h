#pragma once

#include <string>
#include <vector>

#include "bridge/JNIHvlAccessor.h"
#include "bridge/LocalRef.h"

/// How a Java exception is handled.
enum class OnFailure
{
    Throw, ///< JNIException
    Record ///< stored for the wrapper's getErrorMessage; the call returns null, zero or false
};

/// Calls a Java method for a wrapper.
///
/// Every step that may raise a Java exception is checked at once: the look-up of the method, each
/// argument and the call. No step runs with an exception pending. The local references of the
/// arguments are deleted after the call. A receiver of a wrong class is an error here; the machine
/// would end the process.
///
///     JavaCall(*this, "get", "(I)Ljava/lang/Object;").number(index).callObject(array)
///
/// With OnFailure::Record, a failure makes all later steps do nothing. The object can be used for
/// several calls in turn.
class JavaCall
{
public:
    /// A method of the wrapper's class.
    JavaCall(JNIHvlAccessor& wrapper, const char* name, const char* signature,
             OnFailure onFailure = OnFailure::Throw);
    /// A method of another class; null means that the class was not found.
    JavaCall(JNIHvlAccessor& wrapper, jclass type, const char* name, const char* signature,
             OnFailure onFailure = OnFailure::Throw);
    /// A static method of a class.
    static JavaCall ofStatic(JNIHvlAccessor& wrapper, jclass type, const char* name,
                             const char* signature, OnFailure onFailure = OnFailure::Throw);
    /// Creates an object of one of Java's box classes. The caller owns the local reference.
    static jobject box(JNIHvlAccessor& wrapper, const char* className, const char* signature,
                       jvalue value);

    JavaCall& text(const std::string& value);
    JavaCall& object(jobject value);
    JavaCall& take(LocalRef<>&& value);
    JavaCall& number(jint value);
    JavaCall& flag(bool value);
    /// Adds the wrapped object as an argument; a null pointer is a Java null.
    JavaCall& wrapped(const JNIHvlAccessor* wrapper);
    /// Adds an argument of type java.lang.Object: a wrapped object, a Java null for a null pointer,
    /// or a boxed value.
    JavaCall& value(const JNIHvlAccessor* wrapper) { return wrapped(wrapper); }
    JavaCall& value(const char* text) { return boxed(text); }
    JavaCall& value(int number) { return boxed(number); }
    JavaCall& value(double number) { return boxed(number); }
    JavaCall& value(long long number) { return boxed(number); }
    JavaCall& value(bool truth) { return boxed(truth); }
    /// Deleted: other pointers would convert to bool.
    template <class Other>
    JavaCall& value(Other*) = delete;

    LocalRef<> callObject(jobject receiver);
    std::string callText(jobject receiver);
    bool callBoolean(jobject receiver);
    jint callInt(jobject receiver);
    jdouble callDouble(jobject receiver);
    void callVoid(jobject receiver);
    LocalRef<> callStaticObject();
    LocalRef<> construct();
    /// Constructs the object of the wrapper and holds it by a tracked global reference. Every
    /// failure is recorded.
    void constructWrapped();

    bool failed() const { return _failed; }

private:
    /// Java looks up instance and static methods separately.
    enum class Kind
    {
        Instance,
        Static
    };
    JavaCall(JNIHvlAccessor& wrapper, jclass type, Kind kind, const char* name,
             const char* signature, OnFailure onFailure);

    template <class Native>
    JavaCall& boxed(Native native)
    {
        return take(LocalRef<>(_env, _wrapper.newObject(native, false, false)));
    }
    template <class Result, class Function>
    Result invoke(jobject receiver, Function function);
    bool accepts(jobject receiver);
    void addObject(jobject value);
    void clearArguments();
    void settle();
    void raise(const char* className, const std::string& message);
    void require(const void* result);

    JNIHvlAccessor& _wrapper;
    JNIEnv* _env;
    jclass _type;
    jmethodID _method = nullptr;
    const char* _name;
    OnFailure _onFailure;
    bool _failed = false;
    std::vector<jvalue> _arguments;
    std::vector<LocalRef<>> _locals;
};
