#pragma once

#include <string>
#include <vector>

#include "bridge/JNIHvlAccessor.h"
#include "bridge/LocalRef.h"

/// What becomes of a Java exception.
enum class OnFailure
{
    Throw, ///< JNIException
    Record ///< kept for the wrapper's getErrorMessage; the call gives null, zero or false
};

/// A call of a Java method on behalf of a wrapper.
///
/// Every step that can leave a Java exception behind is followed by its check, so that no step is
/// taken with one pending: the look-up of the method, each argument, the call. The local references
/// of the arguments go after the call. A receiver of another class than the method's is refused
/// instead of handed to the machine, which would end the process.
///
///     JavaCall(*this, "get", "(I)Ljava/lang/Object;").number(index).callObject(array)
///
/// With OnFailure::Record, all that follows a failure does nothing. The object can be used for
/// several calls in turn.
class JavaCall
{
public:
    /// A method of the class that the wrapper keeps.
    JavaCall(JNIHvlAccessor& wrapper, const char* name, const char* signature,
             OnFailure onFailure = OnFailure::Throw);
    /// A method of another class; null stands for a class that was not found.
    JavaCall(JNIHvlAccessor& wrapper, jclass type, const char* name, const char* signature,
             OnFailure onFailure = OnFailure::Throw);
    /// A static method of a class.
    static JavaCall ofStatic(JNIHvlAccessor& wrapper, jclass type, const char* name,
                             const char* signature, OnFailure onFailure = OnFailure::Throw);
    /// A new value of one of Java's own classes: a local reference of the caller's.
    static jobject box(JNIHvlAccessor& wrapper, const char* className, const char* signature,
                       jvalue value);

    JavaCall& text(const std::string& value);
    JavaCall& object(jobject value);
    JavaCall& take(LocalRef<>&& value);
    JavaCall& number(jint value);
    JavaCall& flag(bool value);
    /// The wrapped object; a Java null for a null pointer.
    JavaCall& wrapped(const JNIHvlAccessor* wrapper);
    /// As a java.lang.Object: a wrapped object, a Java null for a null pointer, or a boxed value.
    JavaCall& value(const JNIHvlAccessor* wrapper) { return wrapped(wrapper); }
    JavaCall& value(const char* text) { return boxed(text); }
    JavaCall& value(int number) { return boxed(number); }
    JavaCall& value(double number) { return boxed(number); }
    JavaCall& value(long long number) { return boxed(number); }
    JavaCall& value(bool truth) { return boxed(truth); }
    /// Any other pointer would pass for a truth value.
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
    /// Constructs the object that the wrapper is to hold, by a tracked global reference. Every
    /// failure is recorded.
    void constructWrapped();

    bool failed() const { return _failed; }

private:
    /// Which of a class's methods a name stands for: Java looks them up apart.
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
